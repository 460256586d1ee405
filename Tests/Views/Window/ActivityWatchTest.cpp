#include "Views/Window/ActivityWatch.h"

#include "Views/Window/WindowFixture.h"

#include <QApplication>
#include <QMenu>
#include <QWindow>

namespace Nimbrel {
namespace {

class ActivityWatchTest : public Testing::WindowFixture {
 protected:
  ActivityWatchTest() {
    openWindow();
    makeSensitive(add("a.png"));
    store_->withAccess({shot()}, [] {});
    owner_->decide(true);
  }

  [[nodiscard]] ShotPtr shot() const { return Testing::shotNamed(*store_, "a.png"); }
  [[nodiscard]] bool isUnlocked() const { return !store_->isProtected(*shot()); }
  [[nodiscard]] bool locks() const {
    return QTest::qWaitFor([this] { return !isUnlocked(); });
  }
  /// As if another program's window had the focus now.
  static void leave() { Q_EMIT qApp->focusWindowChanged(nullptr); }
  void comeBack() { Q_EMIT qApp->focusWindowChanged(window_->windowHandle()); }
  /// For longer than a focus may be on its way.
  static void waitAWhile() { QTest::qWait(400); }

  ActivityWatch watch_{*store_};
};

TEST_F(ActivityWatchTest, LeavingForAnotherProgramLocks) {
  ASSERT_TRUE(isUnlocked());
  leave();
  EXPECT_TRUE(locks());
}

TEST_F(ActivityWatchTest, GoingToAnotherWindowOfOursIsNoLeaving) {
  leave();
  comeBack();
  waitAWhile();
  EXPECT_TRUE(isUnlocked());
}

TEST_F(ActivityWatchTest, AMenuOfOursIsNoLeavingUntilItIsClosed) {
  QMenu menu;
  menu.addAction(QStringLiteral("Open"));
  menu.popup({});
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
  waitAWhile();
  leave();
  waitAWhile();
  EXPECT_TRUE(isUnlocked());
  menu.close();
  EXPECT_TRUE(locks());
}

TEST_F(ActivityWatchTest, ADragIsNoLeavingUntilTheButtonIsLetGo) {
  QTest::mousePress(window_->windowHandle(), Qt::LeftButton, {}, {600, 400});
  leave();
  waitAWhile();
  EXPECT_TRUE(isUnlocked());
  QTest::mouseRelease(window_->windowHandle(), Qt::LeftButton, {}, {600, 400});
  EXPECT_TRUE(locks());
}

TEST_F(ActivityWatchTest, ADialogOfOursIsNoLeaving) {
  QDialog dialog(window_.get());
  dialog.open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
  waitAWhile();
  EXPECT_TRUE(isUnlocked());
}

}  // namespace
}  // namespace Nimbrel
