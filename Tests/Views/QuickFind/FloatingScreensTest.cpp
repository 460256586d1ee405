// Quick find and the shelf on a desktop with two screens.

#include "Views/QuickFind/QuickFindPanel.h"
#include "Views/Shelf/CaptureShelf.h"

#include "Support/FakeWindowActivation.h"
#include "Support/FakeWindowFocus.h"
#include "Support/FakeWindowStacking.h"
#include "Support/Waiting.h"
#include "Views/Sheets/SheetFixture.h"

#include <QApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QTest>

namespace Nimbrel {
namespace {

class FloatingScreensTest : public Testing::SheetFixture {
 protected:
  [[nodiscard]] static QScreen& screen(qsizetype index) { return *QGuiApplication::screens().at(index); }
  void workAt(QPoint pixel) { focus_.front = FocusedWindow{.id = 5, .place = {pixel, QSize(2, 2)}}; }

  Testing::FakeWindowStacking stacking_;
  Testing::FakeWindowFocus focus_;
  Testing::FakeWindowActivation activation_;
  QuickFindPanel quickFind_{*store_, thumbs_, previews_, {stacking_, focus_, activation_}};
  CaptureShelf shelf_{*store_, thumbs_, previews_, {stacking_, focus_, activation_}};
};

TEST_F(FloatingScreensTest, QuickFindOpensOnTheScreenOfTheWindowInFront) {
  workAt({100, 100});
  quickFind_.open();
  EXPECT_EQ(quickFind_.window()->screen(), &screen(0));
  EXPECT_EQ(quickFind_.window()->pos(), quickFindPlace(screen(0).availableGeometry(), QuickFindPanel::panelSize));
  quickFind_.close();
  workAt({1400, -100});
  quickFind_.open();
  EXPECT_EQ(quickFind_.window()->screen(), &screen(1));
  EXPECT_EQ(quickFind_.window()->pos(), quickFindPlace(screen(1).availableGeometry(), QuickFindPanel::panelSize));
}

TEST_F(FloatingScreensTest, TheShelfComesUpOnTheScreenOfTheWindowInFront) {
  const auto shot = add({.name = "a.png"});
  workAt({1400, -100});
  shelf_.show(shot);
  EXPECT_EQ(shelf_.window()->screen(), &screen(1));
  EXPECT_EQ(shelf_.window()->pos(), shelfPlace(screen(1).availableGeometry(), shelf_.window()->size()));
}

TEST_F(FloatingScreensTest, WithItsScreenTakenAwayThePanelGoesToTheSamePlaceOnAnother) {
  workAt({100, 100});
  shelf_.show(add({.name = "a.png"}));
  auto* panel = shelf_.window();
  const auto place = panel->pos();
  panel->move(10'000, 10'000);
  Q_EMIT qApp->screenRemoved(&screen(1));
  EXPECT_TRUE(Testing::waitUntil([&] { return panel->pos() == place; }));
  EXPECT_TRUE(shelf_.isVisible());
}

TEST_F(FloatingScreensTest, PixelsOfAFinerScreenReachFurtherThanItsSize) {
  // The right screen has 2880 x 1800 pixels from its corner on.
  workAt({1280 + 2000, 1000});
  EXPECT_EQ(screenInUse(focus_), &screen(1));
}

TEST_F(FloatingScreensTest, WhereTheSessionDoesNotTellAWindowOfOursDoes) {
  window_.setScreen(&screen(1));
  window_.setGeometry(QRect(screen(1).geometry().topLeft() + QPoint(10, 10), QSize(800, 600)));
  window_.show();
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  EXPECT_EQ(screenInUse(focus_), &screen(1));
}

TEST_F(FloatingScreensTest, WhereNobodyTellsThePointerDoes) {
  QApplication::setActiveWindow(nullptr);
  QCursor::setPos(1280 + 200, 100);
  ASSERT_EQ(QGuiApplication::screenAt(QCursor::pos()), &screen(1));
  EXPECT_EQ(screenInUse(focus_), &screen(1));
  QCursor::setPos(200, 100);
  EXPECT_EQ(screenInUse(focus_), &screen(0));
}

}  // namespace
}  // namespace Nimbrel
