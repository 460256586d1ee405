#include "Screencapture/StopControl.h"

#include "Screencapture/StopButton.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

namespace Nimbrel::Screencapture {

namespace {

using namespace std::chrono_literals;

TEST(ElapsedTextTest, CountsMinutesAndSeconds) {
  EXPECT_EQ(elapsedText(0s), QStringLiteral("0:00"));
  EXPECT_EQ(elapsedText(7s), QStringLiteral("0:07"));
  EXPECT_EQ(elapsedText(12min), QStringLiteral("12:00"));
  EXPECT_EQ(elapsedText(59min + 59s), QStringLiteral("59:59"));
  EXPECT_EQ(elapsedText(1h + 2min + 3s), QStringLiteral("1:02:03"));
  EXPECT_EQ(elapsedText(100h), QStringLiteral("100:00:00"));
}

QPalette paletteOf(QColor window, QColor text) {
  QPalette palette(window);
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::WindowText, text);
  return palette;
}

class StopControlTest : public ::testing::Test {
 protected:
  [[nodiscard]] QAbstractButton& button() const { return *control_.findChild<QAbstractButton*>(); }
  [[nodiscard]] QString time() const { return control_.findChild<QLabel*>()->text(); }

  std::chrono::milliseconds elapsed_ = 0ms;
  StopControl control_{[this] { return elapsed_; }};
};

TEST_F(StopControlTest, AClickAsksForTheEnd) {
  const QSignalSpy asked(&control_, &StopControl::stopRequested);
  control_.showBeside({});
  QTest::mouseClick(&button(), Qt::LeftButton);
  EXPECT_EQ(asked.count(), 1);
}

TEST_F(StopControlTest, SaysWhatTheButtonDoes) {
  EXPECT_EQ(button().accessibleName(), QStringLiteral("Stop Recording"));
  EXPECT_EQ(button().toolTip(), QStringLiteral("Stop Recording"));
  EXPECT_TRUE(control_.testAttribute(Qt::WA_AlwaysShowToolTips)) << "its window is never active";
}

TEST_F(StopControlTest, TellsTheTimeAsItGoesOn) {
  control_.showBeside({});
  EXPECT_EQ(time(), QStringLiteral("0:00"));
  elapsed_ = 83999ms;
  EXPECT_TRUE(QTest::qWaitFor([&] { return time() == QStringLiteral("1:23"); }));
}

TEST_F(StopControlTest, ALongTimeHasRoom) {
  control_.showBeside({});
  const auto before = control_.width();
  elapsed_ = 10h;
  EXPECT_TRUE(QTest::qWaitFor([&] { return control_.width() > before; }));
  EXPECT_GE(control_.findChild<QLabel*>()->width(),
            control_.fontMetrics().horizontalAdvance(QStringLiteral("10:00:00")));
}

TEST_F(StopControlTest, StandsOutsideOfTheAreaOnItsScreen) {
  const auto screen = QApplication::primaryScreen()->availableGeometry();
  const QRect area(screen.left() + 50, screen.top() + 50, 300, 200);
  control_.showBeside(area);
  EXPECT_FALSE(control_.geometry().intersects(area));
  EXPECT_TRUE(screen.contains(control_.geometry()));
}

TEST_F(StopControlTest, CanBeDragged) {
  control_.showBeside({});
  const auto before = control_.pos();
  const QPoint grip(5, 5);
  QTest::mousePress(&control_, Qt::LeftButton, {}, grip);
  const auto there = control_.mapToGlobal(grip) - QPoint(120, 80);
  QMouseEvent move(QEvent::MouseMove, grip - QPoint(120, 80), there, Qt::NoButton, Qt::LeftButton, {});
  QApplication::sendEvent(&control_, &move);
  EXPECT_EQ(control_.pos(), before - QPoint(120, 80));
}

/// Dark and light, at both scales.
class StopControlPictureTest : public StopControlTest, public ::testing::WithParamInterface<std::tuple<bool, int>> {
 protected:
  [[nodiscard]] static bool isDark() { return std::get<0>(GetParam()); }
  [[nodiscard]] static int scale() { return std::get<1>(GetParam()); }

  [[nodiscard]] QImage picture() {
    QImage image(control_.size() * scale(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale());
    image.fill(Qt::transparent);
    control_.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
  }
  static void keep(const QImage& image) {
    const QDir folder(QStringLiteral(NIMBREL_PICTURES));
    folder.mkpath(QStringLiteral("."));
    const auto name = QStringLiteral("stop-control-%1-%2x.png")
                          .arg(isDark() ? QStringLiteral("dark") : QStringLiteral("light"), QString::number(scale()));
    EXPECT_TRUE(image.save(folder.filePath(name)));
  }
};

/// The columns and rows of pixels of that colour.
QRect boundsOf(QColor colour, const QImage& image) {
  QRect bounds;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y) == colour) bounds |= QRect(x, y, 1, 1);
    }
  }
  return bounds;
}

TEST_P(StopControlPictureTest, FollowsThePaletteAndTheScale) {
  const QColor ground = isDark() ? QColor(0x2B, 0x2B, 0x2D) : QColor(0xF6, 0xF6, 0xF6);
  const QColor text = isDark() ? Qt::white : Qt::black;
  control_.setPalette(paletteOf(ground, text));
  elapsed_ = 83s;
  control_.showBeside({});
  const auto image = picture();
  keep(image);
  EXPECT_EQ(image.pixelColor(image.width() / 2, 4 * scale()), ground);
  EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << "its corners are not round";
  const auto left = image.copy(0, 0, 30 * scale(), image.height());
  const auto dot = boundsOf(recordingRed, left);
  EXPECT_NEAR(dot.width(), 10 * scale(), 2);
  EXPECT_NEAR(dot.center().y(), image.height() / 2, scale());
  const auto square = boundsOf(recordingRed, image.copy(image.width() / 2, 0, image.width() / 2, image.height()));
  EXPECT_NEAR(square.width(), 10 * scale(), 2);
  EXPECT_GT(boundsOf(text, image).width(), 15 * scale()) << "the time cannot be read";
}

INSTANTIATE_TEST_SUITE_P(Looks, StopControlPictureTest, ::testing::Combine(::testing::Bool(), ::testing::Values(1, 2)));

}  // namespace

}  // namespace Nimbrel::Screencapture
