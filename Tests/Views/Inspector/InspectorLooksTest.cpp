#include "Views/Inspector/InspectorPicture.h"

#include "Support/Pictures.h"
#include "Views/Inspector/InspectorFixture.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"
#include "Views/Shared/Theme.h"

#include <QDir>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

constexpr auto invoice =
    "Invoice HL-2207\nHalden Labs\n18 Quay Street, Bergen 5003\nBilled to Perigee Studio\nbilling@perigee.studio\n"
    "+47 55 01 82 40\nIssued Nov 4, 2026 · Due Dec 4, 2026\nGround antenna, X band 1 €4,180.00\nSubtotal €6,444.00\n"
    "VAT 25% €1,611.00\nTotal €8,055.00\nPay online\nhttps://pay.halden.example/HL-2207\nThank you";

/// The inspector as it is drawn, light and dark, at both scales.
class InspectorLooks : public Testing::InspectorFixture, public ::testing::WithParamInterface<std::tuple<bool, int>> {
 protected:
  InspectorLooks() {
    Theme::shared().setAppearance({.scheme = isDark() ? Appearance::Scheme::Dark : Appearance::Scheme::Light,
                                   .accent = {},
                                   .hasHighContrast = false});
    // The palette follows in a later turn.
    QCoreApplication::sendPostedEvents();
  }
  ~InspectorLooks() override { Theme::shared().setAppearance({}); }

  [[nodiscard]] static bool isDark() { return std::get<0>(GetParam()); }
  [[nodiscard]] static int scale() { return std::get<1>(GetParam()); }

  [[nodiscard]] ShotPtr addInvoice(const std::vector<std::string>& sensitive) {
    const std::string name = "Halden Labs invoice HL-2207.png";
    Testing::writePicture(home_.desktop(name), 620, 760);
    store_->importFiles({home_.desktop(name)});
    const auto id = shot(name)->id;
    auto& database = store_->database();
    database.setOCR(id, invoice, sensitive);
    database.setApp(id, "Firefox", "", Database::Trusted::Yes);
    database.setCodes(id, {"https://pay.halden.example/HL-2207"});
    database.setTags(id, {"invoice", "reference", "project:Halden Launch"});
    database.setNote(id, "Paid from the launch budget. Ask Jonas for the signed copy.");
    store_->reload();
    return shot(name);
  }
  void showAt(int height, const ShotPtr& shot) {
    view_->resize(Measures::detailsWidth, height);
    show(shot);
    view_->setFocus();
  }
  [[nodiscard]] static QImage picture(QWidget& widget) {
    QImage image(widget.size() * scale(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale());
    image.fill(Qt::transparent);
    widget.render(&image);
    return image;
  }
  static void keep(const QImage& image, const QString& what) {
    const QDir folder(QStringLiteral(NIMBREL_PICTURES));
    folder.mkpath(QStringLiteral("."));
    const auto name =
        QStringLiteral("%1-%2-%3x.png")
            .arg(what, isDark() ? QStringLiteral("dark") : QStringLiteral("light"), QString::number(scale()));
    EXPECT_TRUE(image.save(folder.filePath(name)));
  }
  /// The colour at a place of a widget, from its upper left corner.
  [[nodiscard]] QColor colorAt(const QImage& image, const QWidget& widget, QPoint place) const {
    return image.pixelColor(widget.mapTo(view_.get(), place) * scale());
  }
};

TEST_P(InspectorLooks, TheWholeFormIsDrawnInTheTokensOfTheTheme) {
  store_->settings().protectSensitive.set(false);
  view_->setCanEdit(true);
  view_->setCanPin(true);
  showAt(1700, addInvoice({"Email"}));
  type("find", QStringLiteral("total"));
  view_->setFocus();
  ASSERT_TRUE(waitUntil([this] { return isShown("found") && !at<InspectorPicture>("preview").image().isNull(); }));
  QCoreApplication::sendPostedEvents();
  const auto image = picture(*view_);
  keep(image, QStringLiteral("inspector"));
  EXPECT_EQ(colorAt(image, at("preview"), {3, 3}), themeColor(Token::Quaternary));
  EXPECT_EQ(colorAt(image, *view_, {150, 180}), themeColor(Token::Separator));
  EXPECT_EQ(colorAt(image, *view_, {5, 400}), themeColor(Token::Window));
  EXPECT_EQ(colorAt(image, at("open"), {8, 21}), themeColor(Token::Control));
  EXPECT_EQ(colorAt(image, at("name"), {4, 13}), themeColor(Token::Base));
  EXPECT_EQ(colorAt(image, at("ocr"), {4, 100}), themeColor(Token::Base));
  EXPECT_EQ(colorAt(image, at("tag.invoice"), {4, at("tag.invoice").height() / 2}), themeColor(Token::Quaternary));
}

TEST_P(InspectorLooks, AProtectedShotShowsALockAndNoPixelOfItself) {
  showAt(672, addInvoice({"Email"}));
  const auto image = picture(*view_);
  keep(image, QStringLiteral("inspector-locked"));
  EXPECT_EQ(colorAt(image, at("preview"), {20, 20}), themeColor(Token::Quaternary));
  EXPECT_EQ(colorAt(image, at("unlock"), {5, 14}), themeColor(Token::Control));
}

TEST_P(InspectorLooks, ThePopoverAndTheMenuShareTheirSurface) {
  store_->settings().projects.set({"Ground Station"});
  showAt(700, addInvoice({}));
  click("recognition");
  auto& popover = at("sourceEditor");
  type("source.field", QStringLiteral("Morvanthile"));
  const auto image = picture(popover);
  keep(image, QStringLiteral("inspector-popover"));
  EXPECT_EQ(image.pixelColor(QPoint(8, 30) * scale()), themeColor(Token::Popover));
  popover.close();
  click("moreActions");
  const auto menu = picture(at("moreMenu"));
  keep(menu, QStringLiteral("inspector-menu"));
  EXPECT_EQ(menu.pixelColor(QPoint(3, 60) * scale()), themeColor(Token::Popover));
}

INSTANTIATE_TEST_SUITE_P(Looks, InspectorLooks, ::testing::Combine(::testing::Bool(), ::testing::Values(1, 2)));

class InspectorLayout : public Testing::InspectorFixture {};

TEST_F(InspectorLayout, TheNarrowestColumnNeedsNoScrollingToTheSide) {
  view_->resize(Measures::detailsMinimum, 700);
  store_->settings().protectSensitive.set(false);
  show(addRead("a name that is much longer than the column is wide.png", "some text", {"Email", "Phone", "Password"}));
  EXPECT_EQ(at<QScrollArea>("scroll").horizontalScrollBar()->maximum(), 0);
}

TEST_F(InspectorLayout, FromRightToLeftLabelsStandAtTheRight) {
  view_->setLayoutDirection(Qt::RightToLeft);
  show(addRead("one.png", "text"));
  EXPECT_LT(at("name").mapTo(view_.get(), QPoint()).x(), view_->width() / 3);
  EXPECT_LT(at("reveal").x(), at("open").x());
}

TEST_F(InspectorLayout, LargerTextIsNotClipped) {
  const auto former = interfaceFont();
  auto font = former;
  font.setPointSizeF(15);
  setInterfaceFont(font);
  view_ = std::make_unique<InspectorView>(*store_, icons_, thumbs_, previews_);
  view_->resize(300, 900);
  show(addRead("one.png", "text"));
  for (const auto* label : view_->findChildren<QLabel*>()) {
    if (!label->isVisible()) continue;
    EXPECT_GE(label->height(), label->fontMetrics().height()) << label->text().toStdString();
  }
  view_.reset();
  setInterfaceFont(former);
}

TEST_F(InspectorLayout, EveryButtonAndFieldHasAName) {
  show(addRead("one.png", "https://example.org"));
  ASSERT_TRUE(waitUntil([this] { return isShown("found"); }));
  for (const auto* button : view_->findChildren<QAbstractButton*>()) {
    EXPECT_FALSE(button->accessibleName().isEmpty() && button->text().isEmpty()) << button->objectName().toStdString();
  }
  for (const auto* field : view_->findChildren<QLineEdit*>()) {
    EXPECT_FALSE(field->accessibleName().isEmpty()) << field->objectName().toStdString();
  }
}

}  // namespace
}  // namespace Nimbrel
