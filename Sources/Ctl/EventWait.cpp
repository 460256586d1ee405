#include "EventWait.h"

#include "Platform/Process.h"

#include <QCoreApplication>

namespace Nimbrel::Ctl {

bool untilDone(const std::function<void(std::function<void()> done)>& start) {
  Process::quitOnSignals();
  bool isDone = false;
  start([&] {
    isDone = true;
    QCoreApplication::quit();
  });
  if (!isDone) QCoreApplication::exec();
  return isDone;
}

}  // namespace Nimbrel::Ctl
