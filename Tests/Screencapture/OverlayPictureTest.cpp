#include "Screencapture/OverlayPicture.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QLinearGradient>
#include <QPainter>

#include <string>

namespace Nimbrel::Screencapture {

namespace {

const QRect monitor(0, 0, 800, 500);

/// A desk with a light window, to see the overlay on both.
QImage desk() {
  QImage image(monitor.size(), QImage::Format_RGB32);
  QPainter painter(&image);
  QLinearGradient ground(0, 0, 800, 500);
  ground.setColorAt(0, QColor(34, 87, 122));
  ground.setColorAt(1, QColor(199, 125, 90));
  painter.fillRect(monitor, ground);
  painter.fillRect(QRect(300, 80, 420, 300), Qt::white);
  painter.fillRect(QRect(300, 80, 420, 26), QColor(228, 228, 232));
  for (int y = 130; y < 360; y += 18) painter.fillRect(QRect(324, y, 300 - y % 70, 7), QColor(70, 70, 80));
  return image;
}

QImage paintedAnew(const QImage& frozen, const OverlayScene& scene) {
  QImage canvas(frozen.size(), frozen.format());
  paintOverlay(canvas, frozen, scene, frozen.rect());
  return canvas;
}

/// For the eye.
void keep(const QImage& picture, const QString& name) {
  const auto folder = QDir(QStringLiteral(NIMBREL_PICTURES));
  ASSERT_TRUE(folder.mkpath(QStringLiteral(".")));
  ASSERT_TRUE(picture.save(folder.filePath(name)));
}

TEST(OverlayPicture, AllIsDimmedWhereNothingIsSelected) {
  const auto frozen = desk();
  const auto canvas = paintedAnew(frozen, overlayScene({}, monitor, 1));
  const auto before = frozen.pixelColor(500, 90);
  const auto after = canvas.pixelColor(500, 90);
  EXPECT_NEAR(after.red(), before.red() * 0.55, 3);
  EXPECT_NEAR(after.blue(), before.blue() * 0.55, 3);
}

TEST(OverlayPicture, TheSelectionShinesThroughWithinAFineLine) {
  const auto frozen = desk();
  const QRect area(200, 120, 250, 160);
  const auto canvas = paintedAnew(frozen, overlayScene(area, monitor, 1));
  const auto inside = area.adjusted(1, 1, -1, -1);
  EXPECT_EQ(canvas.copy(inside), frozen.copy(inside));
  for (const auto& pixel : {QPoint(199, 200), QPoint(450, 200), QPoint(300, 119), QPoint(300, 280)}) {
    EXPECT_EQ(canvas.pixelColor(pixel), QColor(Qt::white));
  }
  EXPECT_LT(canvas.pixelColor(198, 200).lightness(), frozen.pixelColor(198, 200).lightness() / 2);
  EXPECT_NE(canvas.pixelColor(200, 200), QColor(Qt::white)) << "one pixel is wide enough";
  keep(canvas, QStringLiteral("overlay-selection.png"));
}

TEST(OverlayPicture, TheLineIsSeenAtTheEdgesOfTheMonitor) {
  const auto canvas = paintedAnew(desk(), overlayScene(monitor, monitor, 1));
  for (const auto& pixel : {QPoint(0, 250), QPoint(799, 250), QPoint(400, 0), QPoint(400, 499)}) {
    EXPECT_EQ(canvas.pixelColor(pixel), QColor(Qt::white));
  }
  keep(canvas, QStringLiteral("overlay-monitor.png"));
}

TEST(OverlayPicture, PaintingTheChangesGivesWhatPaintingAllGives) {
  const auto frozen = desk();
  auto scene = overlayScene({}, monitor, 1);
  auto canvas = paintedAnew(frozen, scene);
  for (const auto& area : {QRect(300, 80, 420, 300), QRect(310, 90, 5, 5), QRect(310, 90, 200, 130),
                           QRect(310, 90, 201, 129), QRect(0, 0, 800, 500), QRect(790, 490, 10, 10), QRect()}) {
    const auto next = overlayScene(area, monitor, 1);
    paintOverlay(canvas, frozen, next, changesBetween(scene, next));
    scene = next;
    ASSERT_EQ(canvas, paintedAnew(frozen, scene)) << area.width() << " x " << area.height();
  }
}

TEST(OverlayPicture, AStepOfADragPaintsBandsOnly) {
  const QRect large(0, 0, 3840, 2160);
  const auto before = overlayScene(QRect(100, 100, 3000, 1900), large, 2);
  const auto after = overlayScene(QRect(100, 100, 3020, 1890), large, 2);
  qint64 pixels = 0;
  for (const auto& part : changesBetween(before, after)) pixels += qint64{part.width()} * part.height();
  EXPECT_LT(pixels, 3840 * 2160 / 40);
  EXPECT_TRUE(changesBetween(after, after).isEmpty());
}

TEST(OverlayPicture, TheLabelIsLargerOnAFineMonitor) {
  const QRect area(220, 140, 250, 160);
  const auto usual = overlayScene(area, monitor, 1);
  const auto large = overlayScene(area, monitor, 2);
  EXPECT_EQ(large.label.height(), 2 * usual.label.height());
  EXPECT_GT(large.label.width(), usual.label.width() * 7 / 4);
  keep(paintedAnew(desk(), large), QStringLiteral("overlay-selection-2x.png"));
}

TEST(OverlayPicture, OtherColourDepthsAreDimmedAsWell) {
  for (const auto format : {QImage::Format_RGB16, QImage::Format_RGB30}) {
    const auto frozen = desk().convertToFormat(format);
    const auto canvas = paintedAnew(frozen, overlayScene(QRect(10, 10, 50, 50), monitor, 1));
    EXPECT_EQ(canvas.pixelColor(30, 30), frozen.pixelColor(30, 30));
    EXPECT_NEAR(canvas.pixelColor(500, 90).green(), frozen.pixelColor(500, 90).green() * 0.55, 8);
  }
}

TEST(OverlayPicture, TheLabelTellsTheSizeOfTheWholeWindow) {
  const QRect seen(0, 100, 99, 80);
  const auto scene = overlayScene(seen, monitor, 1, QSize(1500, 1080));
  EXPECT_GT(scene.label.width(), overlayScene(seen, monitor, 1).label.width());
  EXPECT_NE(paintedAnew(desk(), scene), paintedAnew(desk(), overlayScene(seen, monitor, 1, QSize(1500, 1090))));
}

constexpr QSize label(80, 24);

TEST(LabelPlace, IsBelowTheArea) {
  EXPECT_EQ(labelPlace(QRect(100, 100, 200, 100), label, monitor, 8), QRect(220, 208, 80, 24));
}

TEST(LabelPlace, IsAboveWhereThereIsNoRoomBelow) {
  EXPECT_EQ(labelPlace(QRect(100, 300, 200, 190), label, monitor, 8), QRect(220, 268, 80, 24));
}

TEST(LabelPlace, IsWithinWhereThereIsNoneAboveEither) {
  EXPECT_EQ(labelPlace(monitor, label, monitor, 8), QRect(712, 468, 80, 24));
  EXPECT_EQ(labelPlace(QRect(100, 10, 200, 485), label, monitor, 8), QRect(220, 463, 80, 24));
}

TEST(LabelPlace, StaysOnItsMonitor) {
  const QRect right(800, -200, 600, 400);
  for (const auto& area : {QRect(800, -200, 3, 3), QRect(1399, 199, 1, 1), QRect(700, -300, 900, 700),
                           QRect(1380, -200, 20, 400), QRect(0, 0, 801, 50)}) {
    EXPECT_TRUE(right.contains(labelPlace(area, label, right, 8))) << area.x() << ", " << area.y();
  }
}

}  // namespace

}  // namespace Nimbrel::Screencapture
