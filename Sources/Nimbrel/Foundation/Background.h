#pragma once

#include <QtConcurrent/QtConcurrentRun>

#include <QFuture>
#include <QObject>
#include <QThreadPool>

#include <utility>

namespace Nimbrel {

/// Runs `work` on `pool` and, once it is done, `then` with its result on the thread of `context`. When `context` is
/// gone by that time, `then` does not run and the result is dropped. `work` must not throw and must own or outlive all
/// it touches.
template <class Work, class Then>
void inBackground(QObject* context, QThreadPool& pool, Work work, Then then) {
  QtConcurrent::run(&pool, std::move(work)).then(context, std::move(then));
}

}  // namespace Nimbrel
