// The companion of a desktop whose portal alone knows of keys.

#include "Screencapture/PortalDouble.h"
#include "Support/EnvironmentVariable.h"
#include "Support/ProgramRun.h"
#include "Support/SessionBus.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QProcess>

#include <memory>

namespace Nimbrel {
namespace {

using Testing::PortalDouble;
using Testing::waitUntil;

const auto shortcutsPortal = QStringLiteral("GlobalShortcuts");
const auto bindMethod = QStringLiteral("BindShortcuts");

class PortalHotkeyProcessesTest : public ::testing::Test {
 protected:
  void offerShortcuts() {
    portal_.offer(shortcutsPortal, {{QStringLiteral("version"), 1U}});
    portal_.behave(QStringLiteral("CreateSession"), [this](const QDBusMessage& call) {
      shortcuts_ = PortalDouble::requestPath(call, QStringLiteral("session"));
      portal_.acknowledge(call, PortalDouble::requestPath(call));
      portal_.respond(call, PortalDouble::requestPath(call), 0, {{QStringLiteral("session_handle"), shortcuts_}});
    });
  }
  void startCompanion() {
    home_.suiteOfOtherProcess()->set(QStringLiteral("captureHotkey"), true);
    companion_ = Testing::startProgram("nimbrel-menubar", {}, home_.folder().path());
  }
  void press(const char* id) {
    portal_.announce(
        shortcutsPortal, QStringLiteral("Activated"),
        {QVariant::fromValue(QDBusObjectPath(shortcuts_)), QLatin1String(id), qulonglong{1}, QVariantMap()});
  }
  /// Whether the companion comes to have said so, and has said nothing else of hotkeys.
  [[nodiscard]] bool says(const QByteArray& line) {
    const bool isSaid = waitUntil([&] {
      log_ += companion_->readAllStandardError();
      return log_.contains(line + '\n');
    });
    EXPECT_EQ(log_.count("could not register"), 1) << log_.toStdString();
    return isSaid;
  }

  const Testing::EnvironmentVariable session_{"XDG_SESSION_TYPE", "wayland"};
  Testing::SessionBus bus_;
  PortalDouble portal_;
  QString shortcuts_;
  Testing::StoreHome home_;
  std::unique_ptr<QProcess> companion_;
  QByteArray log_;
};

TEST_F(PortalHotkeyProcessesTest, APressOfWhatWasGrantedTakesASelection) {
  offerShortcuts();
  portal_.answer(bindMethod, 0);
  portal_.offer(QStringLiteral("Screenshot"), {{QStringLiteral("version"), 2U}});
  portal_.keepAsking(QStringLiteral("Screenshot"));
  startCompanion();
  ASSERT_TRUE(waitUntil([this] { return !portal_.calls(bindMethod).empty(); }));
  press("capture");
  EXPECT_TRUE(waitUntil([this] { return portal_.calls(QStringLiteral("Screenshot")).size() == 1; }));
}

TEST_F(PortalHotkeyProcessesTest, WhatIsRefusedIsALineInTheLogAndNothingElse) {
  offerShortcuts();
  portal_.answer(bindMethod, 2);
  startCompanion();
  EXPECT_TRUE(says("Nimbrel: could not register ⌃⇧5 (error 2)"));
  EXPECT_EQ(companion_->state(), QProcess::Running);
}

TEST_F(PortalHotkeyProcessesTest, ADesktopWithoutThemIsALineInTheLogAndNothingElse) {
  startCompanion();
  EXPECT_TRUE(says("Nimbrel: could not register ⌃⇧5 (error -1)"));
  EXPECT_EQ(companion_->state(), QProcess::Running);
}

}  // namespace
}  // namespace Nimbrel
