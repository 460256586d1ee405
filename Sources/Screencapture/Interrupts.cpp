#include "Screencapture/Interrupts.h"

#include <QSocketNotifier>

#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>

namespace Nimbrel::Screencapture {

namespace {

sigset_t askingForTheEnd() {
  sigset_t signals;
  ::sigemptyset(&signals);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) ::sigaddset(&signals, number);
  return signals;
}

}  // namespace

void holdInterrupts() {
  const auto signals = askingForTheEnd();
  ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  const auto parent = ::getppid();
  ::prctl(PR_SET_PDEATHSIG, SIGINT);
  if (::getppid() != parent) ::raise(SIGINT);
}

Interrupts::Interrupts() {
  const auto signals = askingForTheEnd();
  signals_ = ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
  if (signals_ < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(signals_, QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
    signalfd_siginfo signal{};
    while (::read(signals_, &signal, sizeof signal) == sizeof signal) Q_EMIT came();
  });
}

Interrupts::~Interrupts() {
  notifier_.reset();
  if (signals_ >= 0) ::close(signals_);
}

}  // namespace Nimbrel::Screencapture
