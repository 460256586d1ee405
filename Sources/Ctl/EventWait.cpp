#include "EventWait.h"

#include <QEventLoop>

namespace Nimbrel::Ctl {

void untilDone(const std::function<void(std::function<void()> done)>& start) {
  QEventLoop loop;
  bool isDone = false;
  start([&] {
    isDone = true;
    loop.quit();
  });
  if (!isDone) loop.exec();
}

}  // namespace Nimbrel::Ctl
