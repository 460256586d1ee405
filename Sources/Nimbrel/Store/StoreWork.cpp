#include "Analysis/Perceptual.h"
#include "Store/BackgroundWork.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr int headlessBatchSize = 5000;

}  // namespace

void Store::prepareWork() {
  work_ = std::make_unique<BackgroundWork>(
      BackgroundWork::Tools{*database_, *context_.services.pictureReader, settings_}, context_.role,
      [this](auto condition) { return !isSnapshotCurrent() || std::ranges::any_of(shots_, condition); });
  connect(work_.get(), &BackgroundWork::remainingChanged, this, &Store::ocrRemainingChanged);
  connect(work_.get(), &BackgroundWork::textEnded, this, &Store::takeInText);
  connect(work_.get(), &BackgroundWork::codesEnded, this, &Store::reloadIfChanged);
  connect(work_.get(), &BackgroundWork::hashesEnded, this, &Store::reload);
  connect(work_.get(), &BackgroundWork::done, this, &Store::workDone);
}

void Store::takeInText() {
  const Operation operation(*this);
  reloadIfChanged();
  applyAutomationRules(shots_);
}

std::size_t Store::ocrRemaining() const { return work_->remaining(); }

void Store::startOCR() { work_->startReading(); }

void Store::startCodes() { work_->startCodes(); }

void Store::startHashing() { work_->startHashing(); }

bool Store::isWorking() const { return work_->isWorking(); }

void Store::workOff() { work_->workOff(); }

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
