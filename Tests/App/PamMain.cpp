// The beginning of test programs that ask PAM for the owner: they go on in a child process that starts with the
// wrapper of PAM, in which the password is "secret".

#include "Support/PamServices.h"
#include "Support/TestEnvironment.h"
#include "Views/Shared/NimbrelStyle.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QFont>
#include <QProcess>

#include <signal.h>
#include <sys/prctl.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace {

constexpr const char* wrapper = "LD_PRELOAD";

/// The same program with the same arguments; its exit status.
int runWrapped(int argc, char** argv) {
  const Nimbrel::Testing::PamServices services;
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  QProcess child;
  child.setProcessEnvironment(services.environment());
  child.setProcessChannelMode(QProcess::ForwardedChannels);
  child.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
  child.start(QString::fromLocal8Bit(argv[0]), arguments);
  const bool ended = child.waitForFinished(-1) && child.exitStatus() == QProcess::NormalExit;
  return ended ? child.exitCode() : EXIT_FAILURE;
}

int runTests(int argc, char** argv) {
  const Nimbrel::Testing::TestEnvironment environment;
  ::testing::InitGoogleMock(&argc, argv);
  QApplication application(argc, argv);
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
  Nimbrel::installDesign(application);
  return RUN_ALL_TESTS();
}

}  // namespace

int main(int argc, char** argv) {
  const auto lists = [](std::string_view argument) { return argument == "--gtest_list_tests"; };
  if (!qEnvironmentVariableIsSet(wrapper) && std::none_of(argv, argv + argc, lists)) return runWrapped(argc, argv);
  // It is there by now, and what this process starts does without.
  qunsetenv(wrapper);
  return runTests(argc, argv);
}
