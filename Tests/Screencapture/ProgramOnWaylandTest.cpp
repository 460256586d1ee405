#include "Screencapture/CaptureRequest.h"
#include "Screencapture/PortalDouble.h"
#include "Support/Pictures.h"
#include "Support/ProgramRun.h"
#include "Support/SessionBus.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QUrl>

#include <csignal>
#include <filesystem>
#include <optional>
#include <vector>

namespace Nimbrel::Screencapture {

namespace {

using ::testing::HasSubstr;
using Testing::PortalDouble;

const auto method = QStringLiteral("Screenshot");

/// The program itself, in a session that says it is Wayland's and has no display to fall back on.
class ProgramOnWaylandTest : public ::testing::Test {
 protected:
  ProgramOnWaylandTest() {
    qputenv("XDG_SESSION_TYPE", "wayland");
    portal_.offer(method, {{QStringLiteral("version"), 2U}});
  }
  ~ProgramOnWaylandTest() override { qunsetenv("XDG_SESSION_TYPE"); }

  void start(const QStringList& options) {
    program_ = Testing::startProgram("nimbrel-screencapture",
                                     options + QStringList{QStringLiteral("-d"), QString::fromStdString(target_)},
                                     folder_.path());
  }

  int exitStatus() {
    EXPECT_TRUE(Testing::waitUntil([this] { return program_->state() == QProcess::NotRunning; }));
    return program_->exitStatus() == QProcess::NormalExit ? program_->exitCode() : -1;
  }

  std::string errors() { return program_->readAllStandardError().toStdString(); }

  Testing::TemporaryFolder folder_;
  std::string target_ = folder_.path("shot.png");
  Testing::SessionBus bus_;
  PortalDouble portal_;
  std::unique_ptr<QProcess> program_;
};

}  // namespace

TEST_F(ProgramOnWaylandTest, APictureComesThroughThePortal) {
  for (const auto& options :
       {QStringList{QStringLiteral("-i"), QStringLiteral("-s")},
        QStringList{QStringLiteral("-i"), QStringLiteral("-w")}, QStringList{QStringLiteral("-m")}}) {
    const auto picture = folder_.path("portal.png");
    Testing::writePicture(picture);
    const auto content = Testing::contentOf(picture);
    portal_.answer(method, 0,
                   {{QStringLiteral("uri"), QUrl::fromLocalFile(QString::fromStdString(picture)).toString()}});
    start(options);
    EXPECT_EQ(exitStatus(), Done);
    EXPECT_EQ(errors(), "");
    EXPECT_EQ(Testing::contentOf(target_), content);
    std::filesystem::remove(target_);
  }
}

TEST_F(ProgramOnWaylandTest, CancellingEndsWellWithoutAFile) {
  portal_.answer(method, 1);
  start({QStringLiteral("-i"), QStringLiteral("-s")});
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_EQ(errors(), "");
  EXPECT_FALSE(std::filesystem::exists(target_));
}

TEST_F(ProgramOnWaylandTest, ARefusalEndsBadlyAndSaysWhy) {
  portal_.answer(method, 2);
  start({QStringLiteral("-i"), QStringLiteral("-s")});
  EXPECT_EQ(exitStatus(), Refused);
  EXPECT_THAT(errors(), HasSubstr("The desktop portal refused"));
  EXPECT_FALSE(std::filesystem::exists(target_));
}

TEST_F(ProgramOnWaylandTest, ASessionWithoutAPortalEndsBadlyAndSaysWhy) {
  portal_.vanish();
  start({QStringLiteral("-m")});
  EXPECT_EQ(exitStatus(), Refused);
  EXPECT_THAT(errors(), HasSubstr("The desktop portal does not offer Screenshot"));
}

TEST_F(ProgramOnWaylandTest, AnInterruptTakesTheQuestionOffTheScreen) {
  portal_.keepAsking(method);
  start({QStringLiteral("-i"), QStringLiteral("-w")});
  EXPECT_TRUE(Testing::waitUntil([this] { return !portal_.calls(method).empty(); }));
  ::kill(static_cast<pid_t>(program_->processId()), SIGINT);
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_EQ(errors(), "");
  EXPECT_TRUE(Testing::waitUntil([this] { return !portal_.calls(QStringLiteral("Close")).empty(); }));
}

}  // namespace Nimbrel::Screencapture
