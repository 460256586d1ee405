#include "App/MenuBarCompanion.h"

#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <signal.h>

namespace Nimbrel {
namespace {

using Testing::programPath;
using Testing::startProgram;
using Testing::waitUntil;

/// The program as it starts on a display, here one that shows nothing.
class WindowProgramTest : public ::testing::Test {
 protected:
  std::unique_ptr<QProcess> start(const QString& platform) {
    auto process = std::make_unique<QProcess>();
    auto environment = Testing::environmentOf(home_.folder().path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);
    process->setProcessEnvironment(environment);
    process->start(programPath("nimbrel"), QStringList());
    EXPECT_TRUE(process->waitForStarted());
    return process;
  }

  Testing::StoreHome home_;
};

TEST_F(WindowProgramTest, RunsWithAWindowBesideTheCompanionThatIsThereUntilASignalEndsIt) {
  home_.folder().makeFolder(".local/share/Nimbrel");
  const auto companion = startProgram("nimbrel-menubar", {}, home_.folder().path());
  ASSERT_TRUE(waitUntil([this] { return MenuBarCompanion::isRunning(home_.folders()); }));
  const auto application = start(QStringLiteral("offscreen"));
  ASSERT_TRUE(waitUntil([&] { return Testing::catchesSignal(*application, SIGTERM); }));
  EXPECT_EQ(application->state(), QProcess::Running);
  application->terminate();
  ASSERT_TRUE(application->waitForFinished());
  EXPECT_EQ(application->exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(application->exitCode(), 0);
  EXPECT_EQ(companion->state(), QProcess::Running) << "closing the window does not stop the companion";
}

}  // namespace
}  // namespace Nimbrel
