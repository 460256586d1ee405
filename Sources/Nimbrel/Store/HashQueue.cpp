#include "Store/HashQueue.h"

#include "Analysis/Perceptual.h"
#include "Foundation/Background.h"
#include "Platform/Process.h"

namespace Nimbrel {

namespace {

constexpr int batchSize = 400;

}  // namespace

HashQueue::HashQueue(Database& database, QObject* parent) : QObject(parent), database_(database) {
  pool_.setMaxThreadCount(1);
}

HashQueue::~HashQueue() { pool_.waitForDone(); }

void HashQueue::start() {
  if (isRunning()) return;
  batch_ = database_.pendingHash(batchSize);
  next_ = 0;
  if (!batch_.empty()) hashNext();
}

void HashQueue::hashNext() {
  if (next_ == batch_.size()) {
    batch_.clear();
    Q_EMIT finished();
    return;
  }
  const ShotPtr shot = batch_[next_++];
  inBackground(
      this, pool_,
      [shot] {
        Process::lowerThreadPriority();
        return Perceptual::hash(shot->path);
      },
      [this, shot](std::int64_t hash) { store(shot->id, hash); });
}

void HashQueue::store(ShotID id, std::int64_t hash) {
  // A file that cannot be read stays pending.
  if (hash != 0) {
    const Database::QuickCommits quickly(database_);
    database_.setHash(id, hash);
  }
  hashNext();
}

}  // namespace Nimbrel
