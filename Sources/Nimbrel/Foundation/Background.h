#pragma once

#include <QtConcurrent/QtConcurrentRun>

#include <QFutureWatcher>
#include <QObject>
#include <QThreadPool>

#include <type_traits>
#include <utility>

namespace Nimbrel {

/// Runs `work` on `pool` and, once it is done, `then` with its result on the thread of `context`, always in a later
/// turn of the event loop. When `context` is gone by that time, `then` does not run and the result is dropped. To be
/// called on the thread of `context`. `work` returns a value, must not throw, and owns what it touches or is outlived
/// by it.
template <class Work, class Then>
void inBackground(QObject* context, QThreadPool& pool, Work work, Then then) {
  using Value = std::invoke_result_t<Work>;
  // A watcher and no continuation of the future: that would run within this call if the work were done by then.
  auto* watcher = new QFutureWatcher<Value>(context);
  QObject::connect(watcher, &QFutureWatcherBase::finished, context, [watcher, then = std::move(then)]() mutable {
    watcher->deleteLater();
    then(watcher->future().takeResult());
  });
  watcher->setFuture(QtConcurrent::run(&pool, std::move(work)));
}

}  // namespace Nimbrel
