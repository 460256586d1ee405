#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include <algorithm>
#include <utility>

namespace Nimbrel {

namespace {

bool lacksText(const ShotPtr& shot) { return !shot->ocrDone; }

}  // namespace

void Store::prepareQueues() {
  // The other roles end before the event loop that would bring the results back.
  worksInBackground_ = context_.role == ProcessRole::mainApplication || context_.role == ProcessRole::menuBarCompanion;
  auto& reader = *context_.services.pictureReader;
  readingQueue_ = std::make_unique<ReadingQueue>(*database_, reader);
  connect(readingQueue_.get(), &ReadingQueue::remainingChanged, this, &Store::ocrRemainingChanged);
  connect(readingQueue_.get(), &ReadingQueue::finished, this, &Store::readingEnded);
  codesQueue_ = std::make_unique<CodesQueue>(*database_, reader);
  connect(codesQueue_.get(), &CodesQueue::finished, this, &Store::codesEnded);
  hashQueue_ = std::make_unique<HashQueue>(*database_);
  connect(hashQueue_.get(), &HashQueue::finished, this, &Store::hashingEnded);
}

void Store::startOCR() {
  if (!worksInBackground_ || !settings_.runOCR()) return;
  // The query for what is pending reads the whole table; the shots at hand say sooner that there is nothing.
  if (isSnapshotCurrent() && std::ranges::none_of(shots_, lacksText)) return;
  readingQueue_->start();
}

void Store::readingEnded(BatchEnd end) {
  {
    const Operation operation(*this);
    reloadIfChanged();
    applyAutomationRules(shots_);
  }
  // Where nothing could be written, a restart at once would only lose it again.
  readingIsDue_ = end == BatchEnd::NothingWritten;
  if (end == BatchEnd::Done) startOCR();
  if (!readingQueue_->isRunning() && std::exchange(codesWait_, false) && end == BatchEnd::Done) startCodes();
  tellWhenWorkIsDone();
}

void Store::startCodes() {
  if (!worksInBackground_ || codesQueue_->isRunning()) return;
  codesWait_ = readingQueue_->isRunning();
  // The query for what is pending reads the whole table.
  if (codesWait_ || noCodesPending_ == catalogueState()) return;
  if (worksOff_) {
    codesQueue_->startAll();
  } else {
    codesQueue_->start();
  }
  if (!codesQueue_->isRunning()) noCodesPending_ = catalogueState();
}

void Store::codesEnded() {
  reloadIfChanged();
  tellWhenWorkIsDone();
}

bool Store::isWorking() const {
  return readingQueue_->isRunning() || codesQueue_->isRunning() || codesWait_ || hashQueue_->isRunning();
}

void Store::workOff() {
  worksInBackground_ = true;
  worksOff_ = true;
  startOCR();
  startHashing();
  startCodes();
  QMetaObject::invokeMethod(this, &Store::tellWhenWorkIsDone, Qt::QueuedConnection);
}

void Store::tellWhenWorkIsDone() {
  if (!worksOff_ || isWorking()) return;
  worksOff_ = false;
  Q_EMIT workDone();
}

Store::CatalogueState Store::catalogueState() const {
  return {.othersVersion = database_->dataVersion(), .ownChanges = database_->ownChanges()};
}

}  // namespace Nimbrel
