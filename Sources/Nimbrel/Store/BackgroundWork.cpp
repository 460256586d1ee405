#include "Store/BackgroundWork.h"

#include <algorithm>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int mostPollsBetweenRetries = 300;

bool lacksText(const ShotPtr& shot) { return !shot->ocrDone; }
bool lacksHash(const ShotPtr& shot) { return shot->phash == 0; }

/// Whether the event loop that brings results back runs for as long as the process.
bool staysInEventLoop(ProcessRole role) {
  return role == ProcessRole::mainApplication || role == ProcessRole::menuBarCompanion;
}

}  // namespace

BackgroundWork::BackgroundWork(const Tools& tools, ProcessRole role, MayHold mayHold)
    : database_(tools.database),
      settings_(tools.settings),
      mayHold_(std::move(mayHold)),
      readingQueue_(tools.database, tools.reader),
      codesQueue_(tools.database, tools.reader),
      hashQueue_(tools.database),
      isAllowed_(staysInEventLoop(role)) {
  connect(&readingQueue_, &ReadingQueue::remainingChanged, this, &BackgroundWork::remainingChanged);
  connect(&readingQueue_, &ReadingQueue::finished, this, &BackgroundWork::goOnAfterText);
  connect(&codesQueue_, &CodesQueue::finished, this, [this] {
    Q_EMIT codesEnded();
    tellWhenDone();
  });
  connect(&hashQueue_, &HashQueue::finished, this, [this] {
    Q_EMIT hashesEnded();
    tellWhenDone();
  });
}

// The query for what is pending reads the whole table, so each of these first asks what says sooner that there is
// nothing.

void BackgroundWork::startReading() {
  if (!isAllowed_ || !settings_.runOCR() || !mayHold_(lacksText)) return;
  readingQueue_.start();
}

void BackgroundWork::startHashing() {
  if (!isAllowed_ || !mayHold_(lacksHash)) return;
  if (worksOff_) {
    hashQueue_.startAll();
  } else {
    hashQueue_.start();
  }
}

void BackgroundWork::startCodes() {
  if (!isAllowed_ || codesQueue_.isRunning()) return;
  codesWait_ = readingQueue_.isRunning();
  if (codesWait_ || noCodesPending_ == CatalogueState::of(database_)) return;
  if (worksOff_) {
    codesQueue_.startAll();
  } else {
    codesQueue_.start();
  }
  if (!codesQueue_.isRunning()) noCodesPending_ = CatalogueState::of(database_);
}

void BackgroundWork::goOnAfterText(BatchEnd end) {
  Q_EMIT textEnded();
  // Where nothing could be written, a restart at once would only lose it again.
  const bool isLost = end == BatchEnd::NothingWritten;
  pollsBetweenRetries_ = isLost ? std::clamp(pollsBetweenRetries_ * 2, 1, mostPollsBetweenRetries) : 0;
  pollsToRetry_ = pollsBetweenRetries_;
  if (end == BatchEnd::Done) startReading();
  // A reader without a model for text may still find codes.
  if (!readingQueue_.isRunning() && std::exchange(codesWait_, false) && !isLost) startCodes();
  tellWhenDone();
}

void BackgroundWork::retryReading() {
  if (pollsToRetry_ == 0 || --pollsToRetry_ > 0) return;
  startReading();
  startCodes();
}

bool BackgroundWork::isWorking() const {
  return readingQueue_.isRunning() || codesQueue_.isRunning() || codesWait_ || hashQueue_.isRunning();
}

void BackgroundWork::workOff() {
  isAllowed_ = true;
  worksOff_ = true;
  startReading();
  startHashing();
  startCodes();
  QMetaObject::invokeMethod(this, &BackgroundWork::tellWhenDone, Qt::QueuedConnection);
}

void BackgroundWork::tellWhenDone() {
  if (!worksOff_ || isWorking()) return;
  worksOff_ = false;
  Q_EMIT done();
}

}  // namespace Nimbrel
