#include "Platform/MediaFile.h"
#include "Screencapture/CaptureRequest.h"
#include "Screencapture/ScreenCastDouble.h"
#include "Screencapture/ScreenDouble.h"
#include "Support/DesktopSession.h"
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

namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using Testing::numberedPicture;
using Testing::ScreenDouble;
using Testing::waitUntil;

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
    EXPECT_TRUE(waitUntil([this] { return std::filesystem::exists(target_); })) << "nothing is recorded";
    ::kill(static_cast<pid_t>(program_->processId()), SIGINT);
  }

  int exitStatus() {
    EXPECT_TRUE(waitUntil([this] { return program_->state() == QProcess::NotRunning; }));
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

}  // namespace

TEST_F(RecorderOnWaylandTest, AnInterruptFinishesTheMovie) {
  const auto screen = ScreenDouble::open(pipeWire_, numberedPicture(3, {160, 120}));
  cast_.show({{screen->node(), {}}});
  for (const auto& options : {QStringList{QStringLiteral("-v"), QStringLiteral("-i"), QStringLiteral("-Jvideo")},
                              QStringList{QStringLiteral("-v"), QStringLiteral("-m")}}) {
    start(options);
    interrupt();
    EXPECT_EQ(exitStatus(), Done);
    const auto movie = Testing::readMovie(target_);
    EXPECT_EQ(movie.size, QSize(160, 120));
    EXPECT_THAT(movie.numbers(), AllOf(Not(IsEmpty()), Each(3)));
    std::filesystem::remove(target_);
  }
}

TEST_F(RecorderOnWaylandTest, ADesktopWithoutAPlaceForTheStopControlIsRecordedAllTheSame) {
  qunsetenv("QT_QPA_PLATFORM");
  const auto screen = ScreenDouble::open(pipeWire_, numberedPicture(3, {160, 120}));
  cast_.show({{screen->node(), {}}});
  start({QStringLiteral("-v"), QStringLiteral("-m")});
  interrupt();
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_EQ(Testing::readMovie(target_).size, QSize(160, 120));
}

TEST_F(RecorderOnWaylandTest, AStopControlWhoseDisplayGoesAwayLeavesTheMovie) {
  Testing::DesktopSession session;  // which says that it is X11's
  qputenv("XDG_SESSION_TYPE", "wayland");
  qputenv("QT_QPA_PLATFORM", "xcb");
  const auto screen = ScreenDouble::open(pipeWire_, numberedPicture(3, {160, 120}));
  cast_.show({{screen->node(), {}}});
  start({QStringLiteral("-v"), QStringLiteral("-m")});
  EXPECT_TRUE(waitUntil([this] { return MediaFile::duration(target_).hasValue(); })) << "nothing is recorded";
  session.kill();
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_THAT(Testing::readMovie(target_).numbers(), AllOf(Not(IsEmpty()), Each(3)));
}

TEST_F(RecorderOnWaylandTest, CancellingEndsWellWithoutAFile) {
  portal_.answer(QStringLiteral("Start"), 1);
  start({QStringLiteral("-v"), QStringLiteral("-m")});
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_FALSE(std::filesystem::exists(target_));
}

TEST_F(RecorderOnWaylandTest, ASessionWithoutAPortalEndsBadlyAndSaysWhy) {
  portal_.vanish();
  start({QStringLiteral("-v"), QStringLiteral("-m")});
  EXPECT_EQ(exitStatus(), Refused);
  EXPECT_THAT(program_->readAllStandardError().toStdString(), HasSubstr("does not offer ScreenCast"));
  EXPECT_FALSE(std::filesystem::exists(target_));
}

}  // namespace Nimbrel::Screencapture
