#include "Views/Pins/PinBoard.h"

#include "Platform/ImageFile.h"
#include "Support/FakeWindowStacking.h"
#include "Support/Pictures.h"
#include "Support/Waiting.h"
#include "Views/Sheets/SheetFixture.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

namespace Nimbrel {
namespace {

class PinScreensTest : public Testing::SheetFixture {
 protected:
  [[nodiscard]] static QScreen& screen(qsizetype index) { return *QGuiApplication::screens().at(index); }
  void workOn(QScreen& screen) {
    window_.setScreen(&screen);
    window_.setGeometry(QRect(screen.geometry().topLeft() + QPoint(10, 10), QSize(1120, 720)));
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    ASSERT_EQ(window_.screen(), &screen);
  }
  /// The pin of a picture of 600 x 400 pixels that the gallery has shown.
  PinnedView& pin(const std::string& name) {
    const auto shot = add({.name = name});
    Testing::writePicture(shot->path, 600, 400, 1);
    previews_.store(ImageFile::picture(shot->path), shot->path);
    board_.pin(shot);
    return *board_.window(shot->id);
  }

  Testing::FakeWindowStacking stacking_;
  PinBoard board_{*store_, previews_, stacking_};
};

TEST_F(PinScreensTest, TheDesktopHasTwoScreensOfDifferentScales) {
  ASSERT_EQ(QGuiApplication::screens().size(), 2);
  EXPECT_EQ(screen(0).devicePixelRatio(), 1);
  EXPECT_EQ(screen(1).devicePixelRatio(), 2);
  EXPECT_EQ(screen(1).geometry(), QRect(1280, -200, 1440, 900));
}

TEST_F(PinScreensTest, APinOpensOnTheScreenWhereTheUserWorks) {
  workOn(screen(0));
  const auto& left = pin("a.png");
  EXPECT_EQ(left.geometry(), QRect(1280 - 460 - 40, 40, 460, 307));
  EXPECT_EQ(left.screen(), &screen(0));
}

TEST_F(PinScreensTest, OnAFinerScreenItShowsAPixelOnEachOfTheScreen) {
  workOn(screen(1));
  const auto& right = pin("a.png");
  EXPECT_EQ(right.geometry(), QRect(1280 + 1440 - 300 - 40, -200 + 40, 300, 200));
  EXPECT_EQ(right.screen(), &screen(1));
}

TEST_F(PinScreensTest, OnItsWayToAFinerScreenItKeepsItsSizeAndFillsItsWindow) {
  workOn(screen(0));
  auto& view = pin("a.png");
  view.setScreen(&screen(1));
  view.move(1400, 0);
  ASSERT_TRUE(Testing::waitUntil([&] { return view.devicePixelRatioF() == 2; }));
  EXPECT_EQ(view.geometry(), QRect(1400, 0, 460, 307));
  EXPECT_NEAR(view.picturePlace().width(), 460, 0.001);
}

TEST_F(PinScreensTest, TheCascadeGoesOnFromOneScreenToTheOther) {
  workOn(screen(0));
  (void)pin("a.png");
  workOn(screen(1));
  EXPECT_EQ(pin("b.png").pos(), QPoint(1280 + 1440 - 300 - 40 - 26, -200 + 40 + 26));
}

}  // namespace
}  // namespace Nimbrel
