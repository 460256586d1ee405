#include "Views/Window/WindowFixture.h"

#include "Views/Shared/Theme.h"
#include "Views/Window/Sidebar.h"

#include <QDir>
#include <QImage>
#include <QMenu>
#include <QWindow>

namespace Nimbrel {
namespace {

/// The main window with a library, light and dark, at both scales.
class WindowPictureTest : public Testing::WindowFixture, public ::testing::WithParamInterface<std::tuple<bool, int>> {
 protected:
  WindowPictureTest() {
    Theme::shared().setAppearance({.scheme = isDark() ? Appearance::Scheme::Dark : Appearance::Scheme::Light,
                                   .accent = {},
                                   .hasHighContrast = false});
    QCoreApplication::sendPostedEvents();
    fillLibrary();
    openWindow();
    window_->setFocus();
    // To where nothing is marked for it.
    QTest::mouseMove(window_->windowHandle(), {400, 24});
    settle();
  }
  ~WindowPictureTest() override { Theme::shared().setAppearance({}); }

  [[nodiscard]] static bool isDark() { return std::get<0>(GetParam()); }
  [[nodiscard]] static int scale() { return std::get<1>(GetParam()); }

  void fillLibrary() {
    store_->settings().savedSearches.set({"halden invoice"});
    for (int i = 0; i < 3; ++i) {
      const auto shot = add("shot " + std::to_string(i) + ".png");
      store_->database().setApp(shot->id, "Firefox", "", Database::Trusted::Yes);
      if (i == 0) store_->database().setOCR(shot->id, "somebody", {"email"});
    }
    store_->assignProject("Halden Launch", store_->shots());
    store_->addTag("bug", store_->shots());
    store_->reload();
    store_->setFilter({Filter::All{}});
  }
  [[nodiscard]] static QImage picture(QWidget& widget, const QString& what) {
    QImage image(widget.size() * scale(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale());
    image.fill(Qt::transparent);
    widget.render(&image);
    const QDir folder(QStringLiteral(NIMBREL_PICTURES));
    folder.mkpath(QStringLiteral("."));
    const auto look = isDark() ? QStringLiteral("dark") : QStringLiteral("light");
    EXPECT_TRUE(image.save(folder.filePath(QStringLiteral("%1-%2-%3x.png").arg(what, look).arg(scale()))));
    return image;
  }
};

TEST_P(WindowPictureTest, IsDrawnInTheTokensOfTheTheme) {
  const auto image = picture(*window_, QStringLiteral("window-shell"));
  const auto at = [&image](QPoint place) { return image.pixelColor(place * scale()); };
  EXPECT_EQ(at({2, 2}), themeColor(Token::Sidebar)) << "the toolbar above the sidebar";
  EXPECT_EQ(at({2, 700}), themeColor(Token::Sidebar));
  EXPECT_EQ(at({220, 300}), themeColor(Token::Separator));
  EXPECT_EQ(at({220, 20}), themeColor(Token::Separator));
  EXPECT_EQ(at({400, 5}), themeColor(Token::Window));
  EXPECT_EQ(at({400, 47}), themeColor(Token::Window)) << "no rule between toolbar and header";
  EXPECT_EQ(at({400, 94}), themeColor(Token::Separator)) << "the rule below the header";
  EXPECT_EQ(at({400, 400}), themeColor(Token::Base));
  EXPECT_EQ(at({819, 400}), themeColor(Token::Separator));
  EXPECT_EQ(at({1000, 700}), themeColor(Token::Window));
  EXPECT_EQ(at({12, 50 + 26 + 3}), themeColor(Token::AccentSoft)) << "the selected row";
}

TEST_P(WindowPictureTest, MenusAreDrawn) {
  for (const auto* name : {"menu.application", "menu.file", "menu.edit", "viewOptions.menu", "moreOptions.menu"}) {
    auto* menu = find<QMenu>(name);
    menu->popup({});
    const auto image = picture(*menu, QStringLiteral("window-") + QString::fromLatin1(name));
    EXPECT_EQ(image.pixelColor(QPoint(menu->width() / 2, 3) * scale()), themeColor(Token::Popover)) << name;
    menu->close();
  }
}

INSTANTIATE_TEST_SUITE_P(Looks, WindowPictureTest, ::testing::Combine(::testing::Bool(), ::testing::Values(1, 2)));

}  // namespace
}  // namespace Nimbrel
