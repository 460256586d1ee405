#include "EventWait.h"

#include "Foundation/Background.h"
#include "Platform/Process.h"

#include <QCoreApplication>
#include <QObject>
#include <QThreadPool>

#include <string>

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

Outcome inStoppableThread(const std::function<Outcome(const std::stop_token& stop)>& work) {
  std::stop_source stop;
  QThreadPool pool;
  QObject context;
  auto outcome = Outcome::failed({});
  const bool isInTime = untilDone([&](const std::function<void()>& done) {
    const auto inThread = [&] {
      outcome = work(stop.get_token());
      return true;
    };
    inBackground(&context, pool, inThread, [done](bool) { done(); });
  });
  stop.request_stop();
  pool.waitForDone();
  return isInTime || outcome.status == Outcome::Done ? outcome : Outcome::failed(std::string(interrupted));
}

}  // namespace Nimbrel::Ctl
