#include "Support/Waiting.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QThread>

namespace Nimbrel::Testing {

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
  const QDeadlineTimer deadline(limit);
  while (!condition()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    QThread::usleep(2000);
  }
  return true;
}

void runEventLoopFor(std::chrono::milliseconds time) {
  static_cast<void>(waitUntil([] { return false; }, time));
}

}  // namespace Nimbrel::Testing
