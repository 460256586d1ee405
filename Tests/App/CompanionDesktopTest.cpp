// The panel on a real display, among the windows of others, and the main window coming to the front there.

#include "App/CompanionProcess.h"
#include "App/DesktopFixture.h"

#include "Linux/X11/X11WindowActivation.h"
#include "Linux/X11/X11WindowStacking.h"
#include "Support/DesktopSession.h"
#include "Support/FakeTrayIcon.h"
#include "Support/ProgramRun.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QGuiApplication>
#include <QScreen>

#include <chrono>

namespace Nimbrel {
namespace {

using namespace std::chrono_literals;
using Testing::waitUntil;

/// Longer than a focus takes that is on its way.
constexpr auto aWhile = 400ms;

std::unique_ptr<Testing::DesktopClient> otherProgram() {
  return std::make_unique<Testing::DesktopClient>(
      std::vector<std::string>{Testing::programPath("TestWindow").toStdString(), "WM_CLASS", "other/Other"});
}

class CompanionDesktopTest : public Testing::DesktopFixture {
 protected:
  CompanionDesktopTest() {
    const auto connection = std::make_shared<XcbConnection>();
    services_.windowStacking = makeX11WindowStacking(connection);
    services_.windowActivation = makeX11WindowActivation(connection);
    addShot("Screenshot 1.png", "A recipe for soup");
    const WindowServices windowServices(services_);
    companionStore_ = home_.open(ProcessRole::tool, std::move(services_));
    companion_ = std::make_unique<CompanionProcess>(*companionStore_, windowServices, tray_, [](const std::string&) {});
  }
  ~CompanionDesktopTest() override { act(QStringLiteral("set_desktop 0")); }

  [[nodiscard]] MenuBarView& panel() { return companion_->panel(); }
  /// As a click on an icon there does.
  void open(const QRect& icon) {
    tray_.activate({.place = icon, .token = {}});
    ASSERT_TRUE(QTest::qWaitForWindowActive(&panel()));
  }
  /// Presses Escape until it closes: a desktop that has just changed may still be handing the keyboard on.
  [[nodiscard]] bool closesWithEscape() {
    return waitUntil([this] {
      if (panel().isVisible()) act(QStringLiteral("key Escape"));
      return !panel().isVisible();
    });
  }
  [[nodiscard]] bool closes() {
    return waitUntil([this] { return !panel().isVisible(); });
  }

  Testing::FakeTrayIcon tray_;
  std::unique_ptr<Store> companionStore_;
  std::unique_ptr<CompanionProcess> companion_;
};

const QRect iconAtTheTop(900, 2, 22, 22);

TEST_F(CompanionDesktopTest, ThePanelOpensBelowItsIconWithTheKeyboard) {
  open(iconAtTheTop);
  EXPECT_TRUE(waitUntil([this] { return panel().geometry().top() == iconAtTheTop.bottom() + 5; })) << panel().y();
  EXPECT_NEAR(panel().geometry().center().x(), iconAtTheTop.center().x(), 1);
  act(QStringLiteral("key Escape"));
  EXPECT_TRUE(closes());
}

TEST_F(CompanionDesktopTest, ThePanelIsAboveAnIconAtTheBottom) {
  const auto screen = QGuiApplication::primaryScreen()->geometry();
  open({900, screen.bottom() - 23, 22, 22});
  EXPECT_TRUE(waitUntil([&] { return panel().geometry().bottom() < screen.bottom() - 23; }));
}

TEST_F(CompanionDesktopTest, ThePanelOpensInFrontOfAnotherProgramAndClosesWhenThatComesToTheFront) {
  const auto other = otherProgram();
  Testing::bringToFront("Other");
  open(iconAtTheTop);
  Testing::runEventLoopFor(aWhile);
  EXPECT_TRUE(panel().isVisible());
  Testing::bringToFront("Other");
  EXPECT_TRUE(closes());
}

TEST_F(CompanionDesktopTest, ThePanelOpensOnTheWorkspaceInUse) {
  open(iconAtTheTop);
  ASSERT_TRUE(closesWithEscape());
  act(QStringLiteral("set_desktop 1"));
  open(iconAtTheTop);
  EXPECT_TRUE(closesWithEscape());
}

class RaisingDesktopTest : public Testing::DesktopFixture {
 protected:
  RaisingDesktopTest() {
    services_.windowActivation = makeX11WindowActivation(std::make_shared<XcbConnection>());
    openWindowAside();
  }
  ~RaisingDesktopTest() override { act(QStringLiteral("set_desktop 0")); }
};

TEST_F(RaisingDesktopTest, TheWindowComesToTheFrontOfTheWorkspaceInUse) {
  act(QStringLiteral("set_desktop 1"));
  const auto other = otherProgram();
  Testing::bringToFront("Other");
  ASSERT_TRUE(waitUntil([this] { return !window().isActiveWindow(); }));
  raiseWindow("panel/nimbrel/1-0-host_TIME1");
  EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
  Testing::runEventLoopFor(aWhile);
  EXPECT_TRUE(window().isActiveWindow());
}

TEST_F(RaisingDesktopTest, AMinimisedWindowComesToTheFront) {
  window().showMinimized();
  ASSERT_TRUE(waitUntil([this] { return !window().isActiveWindow(); }));
  raiseWindow({});
  EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
  EXPECT_FALSE(window().isMinimized());
}

}  // namespace
}  // namespace Nimbrel
