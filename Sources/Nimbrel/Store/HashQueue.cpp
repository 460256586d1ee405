#include "Store/HashQueue.h"

#include "Analysis/Perceptual.h"
#include "Foundation/Background.h"
#include "Platform/Process.h"

#include <limits>

namespace Nimbrel {

namespace {

constexpr int batchSize = 400;

}  // namespace

HashQueue::HashQueue(Database& database, QObject* parent) : QObject(parent), database_(database) {
  pool_.setMaxThreadCount(1);
}

HashQueue::~HashQueue() { pool_.waitForDone(); }

void HashQueue::start() { start(batchSize); }

void HashQueue::startAll() { start(std::numeric_limits<int>::max()); }

void HashQueue::start(int limit) {
  if (isRunning()) return;
  batch_ = database_.pendingHash(limit);
  next_ = 0;
  if (!batch_.empty()) hashNext();
}

void HashQueue::hashNext() {
  // The row as it is by now: it may have been removed, filed under another path, or hashed by another process.
  const auto row = database_.shot(batch_[next_]->id);
  if (!row || row->phash != 0) {
    QMetaObject::invokeMethod(this, &HashQueue::passOn, Qt::QueuedConnection);
    return;
  }
  inBackground(
      this, pool_,
      [path = row->path] {
        Process::lowerThreadPriority();
        return Perceptual::hash(path);
      },
      [this, path = row->path](std::int64_t hash) { store(path, hash); });
}

void HashQueue::store(const std::string& path, std::int64_t hash) {
  const auto row = database_.shot(batch_[next_]->id);
  // Moved meanwhile, or its id was given to another file: the hash may not be this row's.
  if (row && row->path != path) return hashNext();
  // A file that cannot be read stays pending.
  if (row && hash != 0) {
    const Database::QuickCommits quickly(database_);
    database_.setHash(row->id, hash);
  }
  passOn();
}

void HashQueue::passOn() {
  ++next_;
  if (next_ < batch_.size()) return hashNext();
  batch_.clear();
  Q_EMIT finished();
}

}  // namespace Nimbrel
