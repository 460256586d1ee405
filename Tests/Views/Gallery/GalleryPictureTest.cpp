#include "Support/Pictures.h"
#include "Support/Waiting.h"
#include "Views/Gallery/GalleryFixture.h"
#include "Views/Gallery/MultiSelectionView.h"
#include "Views/Gallery/PageStrip.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Theme.h"

#include <QCoreApplication>
#include <QDir>
#include <QPainter>

#include <map>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

/// The gallery in both schemes and at both scales.
class GalleryPictureTest : public Testing::GalleryFixture, public ::testing::WithParamInterface<std::tuple<bool, int>> {
 protected:
  GalleryPictureTest() {
    Theme::shared().setAppearance({.scheme = isDark() ? Appearance::Scheme::Dark : Appearance::Scheme::Light,
                                   .accent = {},
                                   .hasHighContrast = false});
    QCoreApplication::sendPostedEvents();
    store_->settings().thumbSize.set(178);
    pictureOf_ = [](const std::string& path, int maxPixel) {
      return path.find("missing") != std::string::npos
                 ? QImage()
                 : Testing::picture(maxPixel, maxPixel * 10 / 16, static_cast<int>(path.size()));
    };
  }
  ~GalleryPictureTest() override { Theme::shared().setAppearance({}); }

  [[nodiscard]] static bool isDark() { return std::get<0>(GetParam()); }
  [[nodiscard]] static int scale() { return std::get<1>(GetParam()); }

  void addSample() {
    const auto text = [](Shot& shot) {
      shot.ocrDone = true;
      shot.ocr = "Halden-3 flight telemetry, altitude and velocity of the halden mission over the last day";
    };
    add("Halden-3 flight telemetry.png", [&](Shot& shot) {
      text(shot);
      shot.filed = true;
      shot.appName = "Firefox";
      shot.appAttributionTrusted = true;
    });
    add("Screenshot 2026-11-12 14-05-32 of halden.png", [&](Shot& shot) {
      text(shot);
      shot.captureType = "window";
    });
    add("halden secret.png", [&](Shot& shot) {
      text(shot);
      shot.sensitive = {"Password"};
    });
    add("halden perigee table.png", [](Shot& shot) { shot.favorite = true; });
    add("halden missing.png", [](Shot& shot) { shot.captureType = "display"; });
    add("halden launch.png", [](Shot& shot) { shot.date -= Seconds(86'400); });
    add("halden board.png", [](Shot& shot) { shot.date -= Seconds(86'400); });
  }
  [[nodiscard]] static QImage picture(QWidget& widget) {
    QImage image(widget.size() * scale(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale());
    widget.render(&image);
    return image;
  }
  static void keep(const QImage& image, const QString& what) {
    const QDir folder(QStringLiteral(NIMBREL_PICTURES));
    folder.mkpath(QStringLiteral("."));
    EXPECT_TRUE(image.save(folder.filePath(
        QStringLiteral("%1-%2-%3x.png")
            .arg(what, isDark() ? QStringLiteral("dark") : QStringLiteral("light"), QString::number(scale())))));
  }
  [[nodiscard]] static QColor at(const QImage& image, QPoint place) { return image.pixelColor(place * scale()); }
};

TEST_P(GalleryPictureTest, TheGridIsDrawnInTheTokensOfTheTheme) {
  addSample();
  store_->setQuery("halden");
  store_->runSearch();
  store_->setSelection({});
  show();
  store_->setSelection({grid().shots().front()->id});
  ASSERT_TRUE(waitUntil([&] { return thumbs_.size() == 5; }));
  QCoreApplication::processEvents();
  const auto image = picture(*view_);
  keep(image, QStringLiteral("gallery-grid"));
  const auto& layout = grid().gridLayout();
  EXPECT_EQ(at(image, {4, 4}), themeColor(Token::Base));
  EXPECT_EQ(at(image, layout.title(0).topLeft() + QPoint(4, 4)), themeColor(Token::Bar));
  const auto box = [&](std::size_t cell) { return QRect(layout.cell(cell).topLeft(), layout.boxSize()); };
  // In the middle of the left stroke.
  EXPECT_EQ(at(image, {box(0).left() + 1, box(0).center().y()}), themeColor(Token::Accent));
  EXPECT_EQ(at(image, {box(1).left(), box(1).center().y()}), themeColor(Token::Separator));
  // Of the protected one nothing but the lock is seen.
  EXPECT_EQ(at(image, box(2).topLeft() + QPoint(20, 20)), themeColor(Token::Quaternary));
  EXPECT_EQ(at(image, box(2).bottomRight() - QPoint(20, 20)), themeColor(Token::Quaternary));
  EXPECT_EQ(at(image, {box(3).right() - 15, box(3).top() + 8}), themeColor(Token::Popover));
  EXPECT_EQ(at(image, box(4).topLeft() + QPoint(20, 20)), themeColor(Token::Quaternary));
}

TEST_P(GalleryPictureTest, ThePagerShowsOneShotLarge) {
  addSample();
  store_->settings().galleryLayout.set(GalleryLayout::gallery);
  store_->reload();
  store_->setSelection({idOf("halden perigee table.png")});
  show();
  auto* pages = view_->findChild<PageStrip*>();
  const auto isLoaded = [&] {
    for (const auto* page : pages->findChildren<GalleryPage*>()) {
      if (!page->isHidden() && !page->preview().image().isNull()) return true;
    }
    return false;
  };
  ASSERT_TRUE(waitUntil([&] { return isLoaded() && thumbs_.size() >= 3; }));
  QCoreApplication::processEvents();
  const auto image = picture(*view_);
  keep(image, QStringLiteral("gallery-pager"));
  const auto& filmstrip = part("gallery.filmstrip");
  EXPECT_EQ(filmstrip.height(), 112);
  EXPECT_EQ(at(image, {filmstrip.width() / 2 - 51, filmstrip.y() + 10 + 34}), themeColor(Token::Accent));
  EXPECT_EQ(at(image, {2, filmstrip.y() + 4}), themeColor(Token::Bar));
  EXPECT_EQ(at(image, {4, 4}), themeColor(Token::Base));
}

TEST_P(GalleryPictureTest, ALockedPageShowsNothingButTheLock) {
  addSample();
  store_->settings().galleryLayout.set(GalleryLayout::gallery);
  store_->reload();
  store_->setSelection({idOf("halden secret.png")});
  show();
  const auto image = picture(*view_);
  keep(image, QStringLiteral("gallery-locked"));
  EXPECT_EQ(at(image, {60, 120}), themeColor(Token::Quaternary));
}

TEST_P(GalleryPictureTest, TheEmptyStatesStandOnTheBase) {
  show({598, 400});
  const auto first = picture(*view_);
  keep(first, QStringLiteral("gallery-first-run"));
  EXPECT_EQ(at(first, {4, 4}), themeColor(Token::Base));
  store_->setQuery("perigee");
  QCoreApplication::processEvents();
  keep(picture(*view_), QStringLiteral("gallery-no-matches"));
}

TEST_P(GalleryPictureTest, TheDetailsOfSeveralShotsAreAForm) {
  addSample();
  store_->reload();
  store_->selectAll();
  MultiSelectionView details(*store_);
  details.resize(300, 420);
  details.show();
  QCoreApplication::processEvents();
  const auto image = picture(details);
  keep(image, QStringLiteral("multi-selection"));
  EXPECT_EQ(at(image, {3, 3}), themeColor(Token::Window));
  EXPECT_EQ(at(image, {Measures::formMargin + 4, 30}), themeColor(Token::Group));
}

INSTANTIATE_TEST_SUITE_P(Looks, GalleryPictureTest, ::testing::Combine(::testing::Bool(), ::testing::Values(1, 2)));

}  // namespace
}  // namespace Nimbrel
