// Hotkeys pressed by another client of a real display, and which of the user's processes hears them.

#include "App/MenuBarCompanion.h"
#include "Linux/Capture/ScreenCaptureProcess.h"
#include "Linux/Factory.h"
#include "Linux/X11/X11Hotkeys.h"
#include "Support/DesktopSession.h"
#include "Support/EnvironmentVariable.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QProcess>

#include <memory>
#include <utility>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

/// What a hand does or an eye looks for, in words of xdotool; whether it came about.
bool xdotool(const QStringList& words) {
  QProcess tool;
  tool.start(QStringLiteral("xdotool"), words);
  return waitUntil([&] { return tool.state() == QProcess::NotRunning; }) && tool.exitCode() == 0;
}

/// Whether a window with that title is on the screen.
bool shows(const char* title) {
  return xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                  QLatin1Char('^') + QLatin1String(title) + QLatin1Char('$')});
}
bool showsOverlay() { return shows("Select a part of the screen"); }
bool showsQuickFind() { return shows("Quick Find"); }

/// Whether a combination is refused to a program that comes now.
bool isTaken(HotkeyAction action) {
  const auto other = makeX11Hotkeys(std::make_shared<XcbConnection>());
  bool isRefused = false;
  other->observe({.pressed = {}, .failed = [&isRefused](HotkeyAction, const HotkeyFailure&) { isRefused = true; }});
  other->hold(action);
  other->release(action);
  return isRefused;
}

/// Presses the combination until a selection is asked for.
bool comesToCapture() {
  return waitUntil([] { return xdotool({QStringLiteral("key"), QStringLiteral("ctrl+shift+5")}) && showsOverlay(); });
}

class HotkeyProcessesTest : public ::testing::Test {
 protected:
  HotkeyProcessesTest() { openWindow(); }
  ~HotkeyProcessesTest() override { xdotool({QStringLiteral("key"), QStringLiteral("Escape")}); }

  /// The store of the window's process, with the services of the desktop.
  void openWindow() {
    auto services = makeServices(AppIdentity::bundleIdentifier());
    // The program lies beside ours, and not beside this one.
    services.screenCaptureTool =
        makeScreenCaptureProcess({.program = Testing::programPath("nimbrel-screencapture").toStdString()});
    auto opened = Store::open({.role = ProcessRole::mainApplication,
                               .folders = home_.folders(),
                               .clock = [this] { return home_.now; },
                               .services = std::move(services),
                               .defaults = AppIdentity::openDefaults(home_.folders().preferences),
                               .isCompanionRunning = [this] { return isCompanionRunning(); }});
    ASSERT_TRUE(opened);
    window_ = std::move(opened).value();
  }
  void switchOnInWindow() const {
    window_->settings().captureHotkey.set(true);
    window_->applyHotkeySetting();
  }
  void switchQuickFindOnInWindow() const {
    window_->settings().quickFindHotkey.set(true);
    window_->applyHotkeySetting();
  }
  void quitWindow() { window_.reset(); }

  void startCompanion() {
    companion_ = Testing::startProgram("nimbrel-menubar", {}, home_.folder().path());
    ASSERT_TRUE(waitUntil([this] { return isCompanionRunning(); }));
  }
  [[nodiscard]] bool isCompanionRunning() const { return MenuBarCompanion::isRunning(home_.folders()); }
  /// How often the companion has said that it cannot have the combination.
  [[nodiscard]] qsizetype complaints() {
    log_ += companion_->readAllStandardError();
    return log_.count("Nimbrel: could not register ⌃⇧5 (error 10)");
  }

  /// For the companion, which is to show its windows.
  Testing::EnvironmentVariable platform_{"QT_QPA_PLATFORM", "xcb"};
  Testing::DesktopSession session_;
  Testing::StoreHome home_;
  std::unique_ptr<Store> window_;
  std::unique_ptr<QProcess> companion_;
  QByteArray log_;
};

TEST_F(HotkeyProcessesTest, SwitchedOnInTheWindowItWorksWhenTheWindowIsGone) {
  startCompanion();
  switchOnInWindow();
  quitWindow();
  EXPECT_TRUE(comesToCapture());
  EXPECT_EQ(complaints(), 0);
}

TEST_F(HotkeyProcessesTest, ACompanionThatCameLaterTakesOverWithoutAFurtherWord) {
  switchOnInWindow();
  startCompanion();
  ASSERT_TRUE(waitUntil([this] { return complaints() == 1; }));
  // Longer than it takes the companion to look again.
  Testing::runEventLoopFor(std::chrono::milliseconds(2500));
  quitWindow();
  EXPECT_TRUE(comesToCapture());
  EXPECT_EQ(complaints(), 1);
}

TEST_F(HotkeyProcessesTest, WithoutACompanionTheWindowTakesTheSelection) {
  switchOnInWindow();
  EXPECT_TRUE(comesToCapture());
  EXPECT_TRUE(window_->captureBusy());
}

TEST_F(HotkeyProcessesTest, SwitchedOffItIsFreeForOthersAndStartsNothing) {
  startCompanion();
  switchOnInWindow();
  ASSERT_TRUE(comesToCapture());
  ASSERT_TRUE(xdotool({QStringLiteral("key"), QStringLiteral("Escape")}));
  ASSERT_TRUE(waitUntil([] { return !showsOverlay(); }));
  window_->settings().captureHotkey.set(false);
  window_->applyHotkeySetting();
  EXPECT_TRUE(waitUntil([] { return !isTaken(HotkeyAction::capture); }));
  EXPECT_TRUE(xdotool({QStringLiteral("key"), QStringLiteral("ctrl+shift+5")}));
  EXPECT_FALSE(showsOverlay());
}

TEST_F(HotkeyProcessesTest, QuickFindOpensAndClosesByItsCombinationAndStaysWhileThatIsHeldDown) {
  startCompanion();
  switchQuickFindOnInWindow();
  ASSERT_TRUE(waitUntil([] { return isTaken(HotkeyAction::quickFind); }));
  const QStringList combination{QStringLiteral("ctrl"), QStringLiteral("shift"), QStringLiteral("space")};
  ASSERT_TRUE(xdotool(QStringList{QStringLiteral("keydown")} + combination));
  ASSERT_TRUE(waitUntil(showsQuickFind));
  // Longer than what is held down keeps the focus from windows.
  Testing::runEventLoopFor(std::chrono::milliseconds(600));
  ASSERT_TRUE(xdotool(QStringList{QStringLiteral("keyup")} + combination));
  EXPECT_TRUE(showsQuickFind());
  for (const bool isOpen : {false, true, false}) {
    ASSERT_TRUE(xdotool({QStringLiteral("key"), QStringLiteral("ctrl+shift+space")}));
    EXPECT_TRUE(waitUntil([&] { return showsQuickFind() == isOpen; })) << isOpen;
  }
}

}  // namespace
}  // namespace Nimbrel
