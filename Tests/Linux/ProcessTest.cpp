#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QProcess>

#include <sys/types.h>

#include <csignal>
#include <string>

namespace Nimbrel {

namespace {

using ::testing::HasSubstr;

class ProcessTest : public ::testing::TestWithParam<int> {
 protected:
  void SetUp() override {
    // As a shell may have left it to this process.
    helper_.setChildProcessModifier([] { ::signal(GetParam(), SIG_DFL); });
    helper_.start(QStringLiteral(NIMBREL_HELPER_PROGRAM), {QStringLiteral("wait-for-signal")});
    ASSERT_TRUE(helper_.waitForReadyRead()) << helper_.errorString().toStdString();
    ASSERT_EQ(helper_.readLine(), "ready\n");
  }

  void send(int number) { ASSERT_EQ(::kill(static_cast<pid_t>(helper_.processId()), number), 0); }

  QProcess helper_;
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

INSTANTIATE_TEST_SUITE_P(Signals, ProcessTest, ::testing::Values(SIGINT, SIGTERM, SIGHUP),
                         [](const auto& parameter) { return std::string("Signal") + std::to_string(parameter.param); });

}  // namespace Nimbrel
