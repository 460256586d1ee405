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
      [this, shot](std::int64_t hash) { store(*shot, hash); });
}

void HashQueue::store(const Shot& shot, std::int64_t hash) {
  // A file that cannot be read stays pending. A row that was removed meanwhile may have left its id to another file.
  const auto row = hash == 0 ? std::nullopt : database_.shot(shot.id);
  if (row && row->path == shot.path) {
    const Database::QuickCommits quickly(database_);
    database_.setHash(shot.id, hash);
  }
  hashNext();
}

}  // namespace Nimbrel
