#include "Views/Companion/LeaveWatch.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QTest>
#include <QWidget>

namespace Nimbrel {
namespace {

class LeaveWatchTest : public ::testing::Test {
 protected:
  LeaveWatchTest() {
    QObject::connect(&watch_, &LeaveWatch::left, &panel_, [this] { ++left_; });
    panel_.resize(200, 200);
    panel_.show();
    panel_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&panel_));
  }
  /// As if another program's window had the focus now.
  static void leave() { Q_EMIT qApp->focusWindowChanged(nullptr); }
  void comeBack() { Q_EMIT qApp->focusWindowChanged(panel_.windowHandle()); }
  [[nodiscard]] bool isLeft() const {
    return QTest::qWaitFor([this] { return left_ == 1; });
  }
  /// For longer than a focus may be on its way.
  [[nodiscard]] bool stays() const {
    QTest::qWait(400);
    return left_ == 0;
  }

  QWidget panel_;
  LeaveWatch& watch_ = *new LeaveWatch(panel_);
  int left_ = 0;
};

TEST_F(LeaveWatchTest, AnotherProgramInFrontIsLeaving) {
  EXPECT_TRUE(stays());
  leave();
  EXPECT_TRUE(isLeft());
}

TEST_F(LeaveWatchTest, AnotherWindowOfOursIsLeaving) {
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  EXPECT_TRUE(isLeft());
}

TEST_F(LeaveWatchTest, ComingBackAtOnceIsNoLeaving) {
  leave();
  comeBack();
  EXPECT_TRUE(stays());
}

TEST_F(LeaveWatchTest, AMenuIsNoLeavingUntilItIsClosed) {
  QMenu menu(&panel_);
  menu.addAction(QStringLiteral("Open"));
  menu.popup({});
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
  leave();
  EXPECT_TRUE(stays());
  menu.close();
  EXPECT_TRUE(isLeft());
}

TEST_F(LeaveWatchTest, ADialogOfItsOwnIsNoLeavingEvenWithAnotherProgramInFront) {
  QDialog dialog(&panel_);
  dialog.open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
  EXPECT_TRUE(stays());
  leave();
  EXPECT_TRUE(stays());
  dialog.reject();
  leave();
  EXPECT_TRUE(isLeft());
}

TEST_F(LeaveWatchTest, ADragIsNoLeavingUntilTheButtonIsLetGo) {
  QTest::mousePress(panel_.windowHandle(), Qt::LeftButton, {}, {100, 100});
  leave();
  EXPECT_TRUE(stays());
  QTest::mouseRelease(panel_.windowHandle(), Qt::LeftButton, {}, {100, 100});
  EXPECT_TRUE(isLeft());
}

TEST_F(LeaveWatchTest, AWindowThatIsHiddenIsNotLeft) {
  leave();
  panel_.hide();
  EXPECT_TRUE(stays());
}

}  // namespace
}  // namespace Nimbrel
