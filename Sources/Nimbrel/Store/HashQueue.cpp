#include "Store/HashQueue.h"

#include "Analysis/Perceptual.h"
#include "Foundation/Background.h"
#include "Platform/Process.h"

namespace Nimbrel {

namespace {

constexpr int batchSize = 400;

}  // namespace

HashQueue::HashQueue(Database& database, QObject* parent) : QObject(parent), database_(database), batch_(database) {
  pool_.setMaxThreadCount(1);
}

HashQueue::~HashQueue() { pool_.waitForDone(); }

void HashQueue::start() { start(batchSize); }

void HashQueue::startAll() { start(ShotBatch::unlimited); }

void HashQueue::start(int limit) {
  if (isRunning()) return;
  batch_.fill(database_.pendingHash(limit));
  if (isRunning()) hashNext();
}

void HashQueue::hashNext() {
  const auto row = batch_.row();
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
  if (batch_.hasMovedFrom(path)) return hashNext();
  // A file that cannot be read stays pending.
  if (hash != 0 && batch_.row()) {
    const Database::QuickCommits quickly(database_);
    database_.setHash(batch_.currentID(), hash);
  }
  passOn();
}

void HashQueue::passOn() {
  batch_.passOn();
  if (isRunning()) return hashNext();
  batch_.clear();
  Q_EMIT finished();
}

}  // namespace Nimbrel
