// What has to be seen from outside, in a process of its own: started by the tests with the name of the thing to do.

#include "AuthenticationHelper.h"
#include "Foundation/Log.h"
#include "Linux/Desktop/DesktopWorkspace.h"
#include "Linux/Desktop/LinuxScreenshotTool.h"
#include "Platform/Process.h"

#include <QCoreApplication>

#include <cstdio>
#include <string>
#include <string_view>

namespace {

struct Farewell {
  ~Farewell() { std::puts("destroyed"); }
};

int waitForSignal() {
  const Farewell farewell;
  Nimbrel::Process::quitOnSignals();
  std::puts("ready");
  std::fflush(stdout);
  return QCoreApplication::exec();
}

int takeInterrupts() {
  const Farewell farewell;
  Nimbrel::Process::quitOnSignals();
  {
    const Nimbrel::Process::OnInterrupt onInterrupt([] {
      std::puts(Nimbrel::Process::isEnding() ? "ending" : "interrupted");
      QCoreApplication::exit(0);
    });
    std::puts("ready");
    std::fflush(stdout);
    QCoreApplication::exec();
  }
  std::puts("ready");
  std::fflush(stdout);
  return QCoreApplication::exec();
}

int log() {
  Nimbrel::Process::logToSystem("nimbrel-helper");
  Nimbrel::Log::write("Nimbrel: 100 %s on\ntwo lines");
  return 0;
}

int printScreenshotFolder() {
  const auto folder = Nimbrel::makeLinuxScreenshotTool()->configuredFolder();
  std::printf("%s", folder ? folder->c_str() : "none");
  return 0;
}

int open(const std::string& path) {
  Nimbrel::makeDesktopWorkspace()->openFile(path);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const std::string_view task(argc > 1 ? argv[1] : "");
  if (task == "wait-for-signal") return waitForSignal();
  if (task == "take-interrupts") return takeInterrupts();
  if (task == "log") return log();
  if (task == "screenshot-folder") return printScreenshotFolder();
  if (task == "open" && argc > 2) return open(argv[2]);
  if (task.starts_with("authenticate")) return runAuthentication(task, {argv + 2, argv + argc});
  return 2;
}
