// What is unlocked is locked again when the user turns to another program, and only then.

#include "App/DesktopFixture.h"

#include "Support/DesktopSession.h"
#include "Support/ProgramRun.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QMenu>
#include <QMenuBar>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

class MainWindowFocusTest : public Testing::DesktopFixture {
 protected:
  MainWindowFocusTest() {
    addShot("Screenshot open.png", "A recipe for soup");
    addShot("Screenshot secret.png", "the key is under the mat", {"Password"});
    openWindow();
    store().database().setShownName(shot("Screenshot secret.png")->id, "Ledger");
    clickShot("Screenshot secret.png");
    unlock("Screenshot secret.png");
  }

  /// Another program's window, which the window manager gives the focus.
  [[nodiscard]] static std::unique_ptr<Testing::DesktopClient> otherProgram() {
    return std::make_unique<Testing::DesktopClient>(
        std::vector<std::string>{Testing::programPath("TestWindow").toStdString(), "WM_CLASS", "other/Other"});
  }
};

TEST_F(MainWindowFocusTest, AnotherProgramInFrontLocksAgain) {
  ASSERT_TRUE(waitUntil([this] { return isShown(QStringLiteral("inspector.form")); }));
  ASSERT_TRUE(staysUnlocked());
  const auto other = otherProgram();
  EXPECT_TRUE(locks());
  EXPECT_TRUE(waitUntil([this] { return isShown(QStringLiteral("inspector.locked")); }));
  EXPECT_FALSE(isShown(QStringLiteral("inspector.form")));
}

TEST_F(MainWindowFocusTest, ComingBackUnlocksNothing) {
  const auto other = otherProgram();
  ASSERT_TRUE(locks());
  comeBack();
  Testing::runEventLoopFor(std::chrono::milliseconds(300));
  EXPECT_FALSE(isUnlocked());
  unlock("Screenshot secret.png");
  EXPECT_TRUE(staysUnlocked()) << "it works as before";
}

TEST_F(MainWindowFocusTest, TheFilterOfAGroupOfUnlockedShotsFallsBack) {
  clickRow(QStringLiteral("Ledger"));
  ASSERT_TRUE(comesToShow({"Screenshot secret.png"}));
  const auto other = otherProgram();
  ASSERT_TRUE(locks());
  EXPECT_EQ(store().filter(), Filter{Filter::All{}});
  EXPECT_TRUE(comesToShow({"Screenshot open.png", "Screenshot secret.png"}));
}

TEST_F(MainWindowFocusTest, AnotherFilterStays) {
  clickRow(QStringLiteral("Sensitive"));
  const auto other = otherProgram();
  ASSERT_TRUE(locks());
  EXPECT_EQ(store().filter(), Filter{Filter::Sensitive{}});
}

TEST_F(MainWindowFocusTest, OurOwnPreviewIsNoLeavingAndClosesWithTheLock) {
  chooseFromMenu("menu.quickLook");
  auto* preview = window().findChild<QWidget*>(QStringLiteral("quickLook"));
  ASSERT_NE(preview, nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowActive(preview));
  EXPECT_TRUE(staysUnlocked());
  const auto other = otherProgram();
  ASSERT_TRUE(locks());
  EXPECT_TRUE(waitUntil([&] {
    preview = window().findChild<QWidget*>(QStringLiteral("quickLook"));
    return preview == nullptr || !preview->isVisible();
  }));
}

TEST_F(MainWindowFocusTest, ASheetIsNoLeaving) {
  chooseFromMenu("menu.purge");
  ASSERT_TRUE(QTest::qWaitForWindowActive(&part("purgeSheet")));
  EXPECT_TRUE(staysUnlocked());
  clickPart("purge.cancel");
  EXPECT_TRUE(staysUnlocked());
}

TEST_F(MainWindowFocusTest, APanelForFilesIsNoLeaving) {
  chooseFromMenu("menu.importFiles");
  ASSERT_TRUE(QTest::qWaitForWindowActive(&part("importPanel")));
  EXPECT_TRUE(staysUnlocked());
}

TEST_F(MainWindowFocusTest, AMenuIsNoLeaving) {
  auto& titles = part<QMenuBar>("menuTitles");
  pointTo(titles.mapToGlobal(titles.actionGeometry(titles.actions().at(1)).center()));
  act(QStringLiteral("click 1"));
  ASSERT_TRUE(waitUntil([] { return QApplication::activePopupWidget() != nullptr; }));
  EXPECT_TRUE(staysUnlocked());
  act(QStringLiteral("key Escape"));
  ASSERT_TRUE(waitUntil([] { return QApplication::activePopupWidget() == nullptr; }));
  EXPECT_TRUE(staysUnlocked());
}

TEST_F(MainWindowFocusTest, TheQuestionForTheOwnerIsNoLeaving) {
  owner_->prompt->ask("Password: ", CredentialPrompt::Echo::Off, [](const auto&) {});
  ASSERT_TRUE(QTest::qWaitForWindowActive(&part("authenticationSheet")));
  EXPECT_TRUE(staysUnlocked());
  owner_->prompt->end();
  EXPECT_TRUE(staysUnlocked());
}

TEST_F(MainWindowFocusTest, AnotherProgramOverASheetLocks) {
  chooseFromMenu("menu.purge");
  ASSERT_TRUE(QTest::qWaitForWindowActive(&part("purgeSheet")));
  ASSERT_TRUE(staysUnlocked());
  const auto other = otherProgram();
  Testing::bringToFront("Other");
  EXPECT_TRUE(locks());
}

TEST_F(MainWindowFocusTest, AMinimisedWindowLocks) {
  act(QStringLiteral("windowminimize %1").arg(window().winId()));
  EXPECT_TRUE(locks());
}

}  // namespace
}  // namespace Nimbrel
