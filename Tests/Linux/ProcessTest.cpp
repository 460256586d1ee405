#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QProcess>

#include <sys/types.h>

#include <csignal>
#include <string>

namespace Nimbrel {

namespace {

using ::testing::HasSubstr;

class HelperProcess : public ::testing::Test {
 protected:
  void start(const char* task) {
    // As a shell may have left them to this process.
    helper_.setChildProcessModifier([] {
      for (const int number : {SIGINT, SIGTERM, SIGHUP}) ::signal(number, SIG_DFL);
    });
    helper_.start(QStringLiteral(NIMBREL_HELPER_PROGRAM), {QLatin1String(task)});
    expectLine("ready\n");
  }
  void expectLine(const char* line) {
    ASSERT_TRUE(helper_.canReadLine() || helper_.waitForReadyRead()) << helper_.errorString().toStdString();
    ASSERT_EQ(helper_.readLine(), line);
  }
  void send(int number) { ASSERT_EQ(::kill(static_cast<pid_t>(helper_.processId()), number), 0); }

  QProcess helper_;
};

class ProcessTest : public HelperProcess, public ::testing::WithParamInterface<int> {
 protected:
  void SetUp() override { start("wait-for-signal"); }
};

}  // namespace

TEST_P(ProcessTest, ASignalEndsTheEventLoopSoThatDestructorsRun) {
  send(GetParam());
  ASSERT_TRUE(helper_.waitForFinished());
  EXPECT_EQ(helper_.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(helper_.exitCode(), 0);
  EXPECT_EQ(helper_.readAll(), "destroyed\n");
}

TEST_P(ProcessTest, SeveralSignalsAreAsOne) {
  for (int signal = 0; signal < 40; ++signal) send(GetParam());
  ASSERT_TRUE(helper_.waitForFinished());
  EXPECT_EQ(helper_.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(helper_.exitCode(), 0);
}

TEST_P(ProcessTest, NoSignalIsBlockedSinceChildrenWouldInheritThat) {
  const auto status = Testing::contentOf("/proc/" + std::to_string(helper_.processId()) + "/status");
  EXPECT_THAT(status, HasSubstr("SigBlk:\t0000000000000000\n"));
  send(GetParam());
  ASSERT_TRUE(helper_.waitForFinished());
}

class TakenInterrupts : public HelperProcess {
 protected:
  void SetUp() override { start("take-interrupts"); }
};

TEST_F(TakenInterrupts, AnInterruptCallsTheActionAndEndsNothing) {
  send(SIGINT);
  expectLine("interrupted\n");
  expectLine("ready\n");
  EXPECT_EQ(helper_.state(), QProcess::Running);
  send(SIGTERM);
  ASSERT_TRUE(helper_.waitForFinished());
}

TEST_F(TakenInterrupts, TheNextOneEndsTheLoopOnceNobodyTakesThem) {
  send(SIGINT);
  expectLine("interrupted\n");
  expectLine("ready\n");
  send(SIGINT);
  ASSERT_TRUE(helper_.waitForFinished());
  EXPECT_EQ(helper_.exitCode(), 0);
  EXPECT_EQ(helper_.readAll(), "destroyed\n");
}

TEST_F(TakenInterrupts, OtherSignalsEndTheLoopAsBefore) {
  send(SIGTERM);
  expectLine("ready\n");
  send(SIGHUP);
  ASSERT_TRUE(helper_.waitForFinished());
  EXPECT_EQ(helper_.readAll(), "destroyed\n");
}

INSTANTIATE_TEST_SUITE_P(Signals, ProcessTest, ::testing::Values(SIGINT, SIGTERM, SIGHUP),
                         [](const auto& parameter) { return std::string("Signal") + std::to_string(parameter.param); });

}  // namespace Nimbrel
