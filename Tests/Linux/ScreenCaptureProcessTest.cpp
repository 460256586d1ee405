#include "Linux/Capture/ScreenCaptureProcess.h"

#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <signal.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel {
namespace {

using namespace std::chrono_literals;
using namespace Testing;
using ::testing::StartsWith;

/// With a script in the place of nimbrel-screencapture.
class ScreenCaptureProcessTest : public ::testing::Test {
 protected:
  void TearDown() override {
    // Nobody else would end what outlived its test.
    if (const auto process = recordedProcess(); HasFailure() && process > 0) ::kill(process, SIGKILL);
  }

  /// A script that runs the commands in the test's folder, where `$1` and so on are its arguments.
  void useProgram(const std::string& commands) {
    options_.program = folder_.write("program", "#!/bin/sh\ncd '" + folder_.path() + "' || exit\n" + commands + "\n");
    std::filesystem::permissions(options_.program, std::filesystem::perms::owner_all);
    tool_ = makeScreenCaptureProcess(options_);
  }
  /// One that says when it is ready for an interrupt, and then waits. `sleep` is asked for often and briefly: the shell
  /// heeds a signal once the command it waits for has ended.
  void useWaitingProgram(const std::string& preparation) {
    useProgram("echo $$ > process.new\n" + preparation + "\nmv process.new process\nwhile :; do sleep 0.02; done");
  }

  void launch(std::vector<std::string> arguments = {"-m", "-d", "/somewhere/file.png"}) {
    auto launched = tool_->launch(context_.get(), std::move(arguments), [this](int exitStatus) {
      ASSERT_FALSE(exitStatus_) << "told twice";
      exitStatus_ = exitStatus;
    });
    ASSERT_TRUE(launched) << launched.error().message;
    running_ = std::move(launched).value();
  }
  void launchAndWaitUntilReady(std::vector<std::string> arguments = {"-m", "-d", "/somewhere/file.png"}) {
    launch(std::move(arguments));
    ASSERT_TRUE(waitUntil([this] { return recordedProcess() > 0; }));
  }
  [[nodiscard]] std::optional<int> exitStatus() const {
    EXPECT_TRUE(waitUntil([this] { return exitStatus_.has_value(); }));
    return exitStatus_;
  }
  [[nodiscard]] pid_t recordedProcess() const {
    pid_t process = 0;
    std::ifstream(folder_.path("process")) >> process;
    return process;
  }
  [[nodiscard]] static bool isRunning(pid_t process) { return ::kill(process, 0) == 0; }

  const TemporaryFolder folder_;
  ScreenCaptureProcessOptions options_;
  std::unique_ptr<QObject> context_ = std::make_unique<QObject>();
  std::unique_ptr<ScreenCaptureTool> tool_;
  std::unique_ptr<RunningCapture> running_;
  std::optional<int> exitStatus_;
};

TEST_F(ScreenCaptureProcessTest, HandsTheArgumentsOnAsTheyAre) {
  useProgram("for word; do echo \"$word\"; done > words");
  launch({"-i", "-s", "-d", "/a  folder/with \"quotes\"/é.png"});
  EXPECT_EQ(exitStatus(), 0);
  EXPECT_EQ(contentOf(folder_.path("words")), "-i\n-s\n-d\n/a  folder/with \"quotes\"/é.png\n");
}

TEST_F(ScreenCaptureProcessTest, TellsTheExitStatus) {
  useProgram("exit 3");
  launch();
  EXPECT_EQ(exitStatus(), 3);
}

TEST_F(ScreenCaptureProcessTest, TellsTheEndInALaterTurnOfTheEventLoop) {
  useProgram("exit 0");
  launch();
  EXPECT_FALSE(exitStatus_);
  EXPECT_EQ(exitStatus(), 0);
}

TEST_F(ScreenCaptureProcessTest, TellsWhichSignalEndedTheProgram) {
  useProgram("kill -SEGV $$");
  launch();
  EXPECT_EQ(exitStatus(), 128 + SIGSEGV);
}

TEST_F(ScreenCaptureProcessTest, SaysWhyAProgramThatIsNotThereCannotBeStarted) {
  tool_ = makeScreenCaptureProcess({.program = folder_.path("nimbrel-screencapture")});
  const auto launched = tool_->launch(context_.get(), {"-m"}, [this](int status) { exitStatus_ = status; });
  ASSERT_FALSE(launched);
  EXPECT_THAT(launched.error().message, StartsWith("nimbrel-screencapture cannot be started: "));
  runEventLoopFor(50ms);
  EXPECT_FALSE(exitStatus_);
}

TEST_F(ScreenCaptureProcessTest, SaysWhyAFileThatIsNoProgramCannotBeStarted) {
  tool_ = makeScreenCaptureProcess({.program = folder_.write("text", "no program")});
  const auto launched = tool_->launch(context_.get(), {"-m"}, [](int) {});
  ASSERT_FALSE(launched);
  EXPECT_THAT(launched.error().message, StartsWith("text cannot be started: "));
}

TEST_F(ScreenCaptureProcessTest, AnInterruptReachesTheProgram) {
  useWaitingProgram("trap 'echo written > movie; exit 0' INT");
  launchAndWaitUntilReady();
  running_->interrupt();
  EXPECT_EQ(exitStatus(), 0);
  EXPECT_EQ(contentOf(folder_.path("movie")), "written\n");
}

TEST_F(ScreenCaptureProcessTest, AnInterruptReachesTheProgramAlsoWhereAShellHasInterruptsIgnored) {
  const auto former = ::signal(SIGINT, SIG_IGN);
  useWaitingProgram("");
  launchAndWaitUntilReady();
  ::signal(SIGINT, former);
  running_->interrupt();
  EXPECT_EQ(exitStatus(), 128 + SIGINT);
}

TEST_F(ScreenCaptureProcessTest, MoreInterruptsAreAsOne) {
  useProgram(
      "trap 'echo interrupt >> interrupts' INT\necho $$ > process\n"
      "while [ ! -e go ]; do sleep 0.02; done");
  launchAndWaitUntilReady();
  running_->interrupt();
  ASSERT_TRUE(waitUntil([this] { return std::filesystem::exists(folder_.path("interrupts")); }));
  running_->interrupt();
  runEventLoopFor(100ms);
  folder_.write("go", "");
  EXPECT_EQ(exitStatus(), 0);
  EXPECT_EQ(contentOf(folder_.path("interrupts")), "interrupt\n");
}

TEST_F(ScreenCaptureProcessTest, AnInterruptAfterTheEndDoesNothing) {
  useProgram("exit 0");
  launch();
  EXPECT_EQ(exitStatus(), 0);
  running_->interrupt();
  runEventLoopFor(50ms);
  running_->interrupt();
}

TEST_F(ScreenCaptureProcessTest, AProgramThatDoesNotEndAfterAnInterruptIsTerminated) {
  options_.patience = 50ms;
  useWaitingProgram("trap 'echo interrupted > first' INT");
  launchAndWaitUntilReady();
  running_->interrupt();
  EXPECT_EQ(exitStatus(), 128 + SIGTERM);
  EXPECT_EQ(contentOf(folder_.path("first")), "interrupted\n");
}

TEST_F(ScreenCaptureProcessTest, AProgramThatHeedsNothingIsKilled) {
  options_.patience = 50ms;
  options_.lastPatience = 50ms;
  useWaitingProgram("trap '' INT; trap 'echo terminated > second' TERM");
  launchAndWaitUntilReady();
  running_->interrupt();
  EXPECT_EQ(exitStatus(), 128 + SIGKILL);
  EXPECT_EQ(contentOf(folder_.path("second")), "terminated\n");
}

TEST_F(ScreenCaptureProcessTest, ARecordingIsGivenMoreTimeToWriteItsFile) {
  options_.patience = 1ms;
  useWaitingProgram("trap 'sleep 0.3; echo written > movie; exit 0' INT");
  launchAndWaitUntilReady({"-v", "-m", "-d", "/somewhere/file.mov"});
  running_->interrupt();
  EXPECT_EQ(exitStatus(), 0);
  EXPECT_EQ(contentOf(folder_.path("movie")), "written\n");
}

TEST_F(ScreenCaptureProcessTest, ARecordingThatDoesNotEndIsTerminatedInTheEnd) {
  options_.patienceWithRecordings = 50ms;
  useWaitingProgram("trap '' INT");
  launchAndWaitUntilReady({"-v", "-m", "-d", "/somewhere/file.mov"});
  running_->interrupt();
  EXPECT_EQ(exitStatus(), 128 + SIGTERM);
}

TEST_F(ScreenCaptureProcessTest, TheProgramGoesOnWhenNobodyHoldsItAnyMoreAndItsEndIsTold) {
  useWaitingProgram("trap 'exit 7' INT");
  launchAndWaitUntilReady();
  running_.reset();
  tool_.reset();
  runEventLoopFor(50ms);
  EXPECT_FALSE(exitStatus_);
  ASSERT_TRUE(isRunning(recordedProcess()));
  ASSERT_EQ(::kill(recordedProcess(), SIGINT), 0);
  EXPECT_EQ(exitStatus(), 7);
}

TEST_F(ScreenCaptureProcessTest, OnceTheContextIsGoneTheProgramGoesOnAndItsEndIsNotTold) {
  useWaitingProgram("trap 'exit 0' INT");
  launchAndWaitUntilReady();
  context_.reset();
  const auto process = recordedProcess();
  ASSERT_TRUE(isRunning(process));
  running_->interrupt();
  EXPECT_TRUE(waitUntil([&] { return !isRunning(process); })) << "nor does it stay behind as a zombie";
  runEventLoopFor(20ms);
  EXPECT_FALSE(exitStatus_);
}

TEST_F(ScreenCaptureProcessTest, WhoeverIsToldMayLetGoOfEverything) {
  useProgram("exit 0");
  auto launched = tool_->launch(context_.get(), {"-m"}, [this](int status) {
    exitStatus_ = status;
    running_.reset();
    tool_.reset();
    context_.reset();
  });
  ASSERT_TRUE(launched);
  running_ = std::move(launched).value();
  EXPECT_EQ(exitStatus(), 0);
  runEventLoopFor(20ms);
}

}  // namespace
}  // namespace Nimbrel
