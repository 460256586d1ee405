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
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace Nimbrel::Process {

namespace {

/// Written to by the signal handler, which may do little else.
volatile int signalPipe = -1;
volatile std::sig_atomic_t signalled = 0;
volatile std::sig_atomic_t interruptsAreTaken = 0;

/// What an interrupt does; empty while it ends the process.
std::function<void()>& interruptAction() {
  static std::function<void()> action;
  return action;
}

extern "C" void passOnSignal(int number) {
  if (number != SIGINT || interruptsAreTaken == 0) signalled = 1;
  const int error = errno;
  const char token = static_cast<char>(number);
  [[maybe_unused]] const auto written = ::write(signalPipe, &token, 1);
  errno = error;
}

void takeSignals(int readEnd) {
  std::array<char, 16> tokens{};
  const auto count = ::read(readEnd, tokens.data(), tokens.size());
  const std::span taken(tokens.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  const auto interrupts = std::ranges::count(taken, static_cast<char>(SIGINT));
  const auto isTaken = interrupts > 0 && interruptAction() != nullptr;
  if (isTaken) interruptAction()();
  if (!isTaken || interrupts < std::ssize(taken)) QCoreApplication::exit(0);
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
  QObject::connect(notifier, &QSocketNotifier::activated, notifier, [readEnd = ends[0]] { takeSignals(readEnd); });
  struct sigaction action {};
  action.sa_handler = passOnSignal;
  action.sa_flags = SA_RESTART;
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) ::sigaction(number, &action, nullptr);
}

OnInterrupt::OnInterrupt(std::function<void()> action) {
  interruptAction() = std::move(action);
  interruptsAreTaken = 1;
}

OnInterrupt::~OnInterrupt() {
  interruptsAreTaken = 0;
  interruptAction() = nullptr;
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
