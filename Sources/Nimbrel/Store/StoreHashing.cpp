#include "Analysis/Perceptual.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr int headlessBatchSize = 5000;

bool lacksHash(const ShotPtr& shot) { return shot->phash == 0; }

}  // namespace

void Store::startHashing() {
  if (!worksInBackground_) return;
  // The query for what is pending reads the whole table; the shots at hand say sooner that there is nothing.
  if (isSnapshotCurrent() && std::ranges::none_of(shots_, lacksHash)) return;
  if (worksOff_) {
    hashQueue_->startAll();
  } else {
    hashQueue_->start();
  }
}

void Store::hashingEnded() {
  reload();
  tellWhenWorkIsDone();
}

std::size_t Store::hashAllPending(const HashLog& log) {
  const Operation operation(*this);
  const Database::QuickCommits quickly(*database_);
  std::size_t hashed = 0;
  for (const auto& shot : database_->pendingHash(headlessBatchSize)) {
    const auto hash = Perceptual::hash(shot->path);
    if (hash != 0) {
      database_->setHash(shot->id, hash);
      ++hashed;
    }
    if (log) log(hash, *shot);
  }
  reloadIfChanged();
  return hashed;
}

}  // namespace Nimbrel
