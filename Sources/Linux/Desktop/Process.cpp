#include "Platform/Process.h"

#include "Foundation/Log.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <fcntl.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <string>
#include <string_view>

namespace Nimbrel::Process {

namespace {

/// Written to by the signal handler, which may do little else.
volatile int signalPipe = -1;
volatile std::sig_atomic_t signalled = 0;

extern "C" void passOnSignal(int) {
  signalled = 1;
  const int error = errno;
  const char token = 0;
  [[maybe_unused]] const auto written = ::write(signalPipe, &token, 1);
  errno = error;
}

void writeToStandardError(std::string_view line) {
  const std::string whole = std::string(line) + '\n';
  std::fwrite(whole.data(), 1, whole.size(), stderr);
}

void writeToSystemLog(std::string_view line) {
  std::string onOneLine(line);
  std::replace_if(
      onOneLine.begin(), onOneLine.end(), [](char character) { return character == '\n' || character == '\0'; }, ' ');
  ::syslog(LOG_NOTICE, "%s", onOneLine.c_str());
}

}  // namespace

void quitOnSignals() {
  if (signalPipe >= 0) return;
  // Not signalfd: it would need the signals blocked, and child processes would inherit that.
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  signalPipe = ends[1];
  auto* notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, QCoreApplication::instance());
  QObject::connect(notifier, &QSocketNotifier::activated, notifier, [readEnd = ends[0]] {
    std::array<char, 16> tokens{};
    [[maybe_unused]] const auto count = ::read(readEnd, tokens.data(), tokens.size());
    QCoreApplication::exit(0);
  });
  struct sigaction action {};
  action.sa_handler = passOnSignal;
  action.sa_flags = SA_RESTART;
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) ::sigaction(number, &action, nullptr);
}

bool isEnding() { return signalled != 0; }

void logToSystem(const char* programName) {
  ::openlog(programName, LOG_PID, LOG_USER);
  Log::setSink([](std::string_view line) {
    writeToStandardError(line);
    writeToSystemLog(line);
  });
}

}  // namespace Nimbrel::Process
