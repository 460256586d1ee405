// Pins as they are seen on a desktop: one at rest, one under the pointer, one faded.

#include "Views/Pins/PinnedView.h"

#include "Support/FakeWindowStacking.h"
#include "Support/Pictures.h"
#include "Views/Pins/PinButton.h"
#include "Views/Shared/Theme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QEnterEvent>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>

#include <memory>
#include <tuple>

namespace Nimbrel {
namespace {

constexpr QSize desktop(1120, 720);
constexpr QRect window(48, 76, 500, 600);
constexpr QColor paper(255, 255, 255);

class PinPicture : public ::testing::TestWithParam<std::tuple<bool, int>> {
 protected:
  PinPicture() {
    Theme::shared().setAppearance({.scheme = isDark() ? Appearance::Scheme::Dark : Appearance::Scheme::Light,
                                   .accent = {},
                                   .hasHighContrast = false});
    image_.setDevicePixelRatio(scale());
    QPainter painter(&image_);
    QLinearGradient wallpaper(0, 0, 0, desktop.height());
    wallpaper.setColorAt(0, QColor(0xB9, 0xC7, 0xD6));
    wallpaper.setColorAt(1, QColor(0x87, 0x9D, 0xB5));
    painter.fillRect(QRect(QPoint(), desktop), wallpaper);
    painter.fillRect(window, paper);
  }
  ~PinPicture() override { Theme::shared().setAppearance({}); }

  [[nodiscard]] static bool isDark() { return std::get<0>(GetParam()); }
  [[nodiscard]] static int scale() { return std::get<1>(GetParam()); }

  [[nodiscard]] std::unique_ptr<PinnedView> pin(int width, int height, int seed) {
    auto view = std::make_unique<PinnedView>(Testing::picture(width, height, seed), stacking_);
    view->open(*QGuiApplication::primaryScreen(), 0);
    return view;
  }
  static void pointAt(PinnedView& view) {
    QEnterEvent event({50, 50}, {50, 50}, view.mapToGlobal(QPointF(50, 50)));
    QApplication::sendEvent(&view, &event);
  }
  void lay(PinnedView& view, QPoint at) {
    QImage seen(view.size() * scale(), QImage::Format_ARGB32_Premultiplied);
    seen.setDevicePixelRatio(scale());
    seen.fill(Qt::transparent);
    view.render(&seen, {}, {}, QWidget::DrawChildren);
    QPainter(&image_).drawImage(at, seen);
  }
  [[nodiscard]] QColor at(QPoint place) const { return image_.pixelColor(place * scale()); }
  void keep() const {
    const QDir folder(QStringLiteral(NIMBREL_PICTURES));
    folder.mkpath(QStringLiteral("."));
    const auto look = isDark() ? QStringLiteral("dark") : QStringLiteral("light");
    EXPECT_TRUE(image_.save(folder.filePath(QStringLiteral("pins-%1-%2x.png").arg(look).arg(scale()))));
  }

  Testing::FakeWindowStacking stacking_;
  QImage image_{desktop * scale(), QImage::Format_RGB32};
};

TEST_P(PinPicture, OfThreeOnADesktop) {
  const auto hovered = pin(1840, 1212, 1);
  pointAt(*hovered);
  lay(*hovered, {620, 68});
  const auto resting = pin(360, 237, 2);
  lay(*resting, {720, 414});
  const auto faded = pin(236, 289, 3);
  faded->toggleFade();
  pointAt(*faded);
  lay(*faded, {452, 392});
  keep();

  EXPECT_EQ(at({1060, 76}), themeColor(Token::Popover)) << "the ground of the button that fades";
  EXPECT_NE(at({720 + 340, 424}), themeColor(Token::Popover)) << "no buttons on the one at rest";
  EXPECT_NE(at({452 + 100, 392 + 150}), faded->picture().pixelColor(100, 150));
}

INSTANTIATE_TEST_SUITE_P(Looks, PinPicture, ::testing::Combine(::testing::Bool(), ::testing::Values(1, 2)));

}  // namespace
}  // namespace Nimbrel
