#pragma once

#include "Screencapture/CaptureRequest.h"
#include "Screencapture/ScreenCastDouble.h"
#include "Screencapture/ScreenDouble.h"
#include "Support/Movies.h"
#include "Support/ProgramRun.h"
#include "Support/SessionBus.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <memory>
#include <string>

namespace Nimbrel::Screencapture {

/// The program itself, in a session that says it is Wayland's.
class RecorderOnWaylandTest : public ::testing::Test {
 protected:
  RecorderOnWaylandTest() { qputenv("XDG_SESSION_TYPE", "wayland"); }
  ~RecorderOnWaylandTest() override {
    qunsetenv("XDG_SESSION_TYPE");
    qputenv("QT_QPA_PLATFORM", platform_);
  }

  void start(const QStringList& options) {
    const auto file = QStringList{QStringLiteral("-d"), QString::fromStdString(target_)};
    program_ = Testing::startProgram("nimbrel-screencapture", options + file, folder_.path());
  }

  /// Stops it once there is a movie.
  void interrupt() {
    EXPECT_TRUE(Testing::waitUntil([this] { return std::filesystem::exists(target_); })) << "nothing is recorded";
    ::kill(static_cast<pid_t>(program_->processId()), SIGINT);
  }

  int exitStatus() {
    EXPECT_TRUE(Testing::waitUntil([this] { return program_->state() == QProcess::NotRunning; }));
    return program_->exitStatus() == QProcess::NormalExit ? program_->exitCode() : -1;
  }

  Testing::TemporaryFolder folder_;
  std::string target_ = folder_.path("recording.mov");
  QByteArray platform_ = qgetenv("QT_QPA_PLATFORM");
  Testing::SessionBus bus_;
  Testing::PortalDouble portal_;
  Testing::PipeWireDaemon pipeWire_;
  Testing::ScreenCastDouble cast_{portal_, pipeWire_};
  std::unique_ptr<QProcess> program_;
};

}  // namespace Nimbrel::Screencapture
