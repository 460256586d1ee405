#include "Store/ReadingQueue.h"

#include "Analysis/Sensitive.h"
#include "Foundation/Text.h"
#include "Platform/FileSystem.h"

namespace Nimbrel {

namespace {

constexpr int batchSize = 200;

}  // namespace

ReadingQueue::ReadingQueue(Database& database, PictureReader& reader, QObject* parent)
    : QObject(parent), database_(database), reader_(reader), batch_(database) {}

void ReadingQueue::start() {
  if (isRunning()) return;
  batch_.fill(database_.pendingOCR(batchSize));
  if (!isRunning()) return;
  hasProgress_ = false;
  takeNextLater();
  Q_EMIT remainingChanged();
}

void ReadingQueue::takeNextLater() { QMetaObject::invokeMethod(this, &ReadingQueue::takeNext, Qt::QueuedConnection); }

void ReadingQueue::takeNext() {
  const auto row = batch_.row();
  if (!row || row->ocrDone) return passOn();
  if (!FileSystem::exists(row->path)) {
    const Database::QuickCommits quickly(database_);
    database_.setOCR(row->id, {}, {});
    return passOn();
  }
  OCR::recognizeWithBarcodes(this, reader_, row->path,
                             [this, path = row->path](const auto& read) { take(path, read); });
}

void ReadingQueue::take(const std::string& path, const std::optional<OCR::RecognitionWithBarcodes>& read) {
  if (!read) return end(BatchEnd::CannotRead);
  if (batch_.hasMovedFrom(path)) return takeNextLater();
  if (batch_.row()) write(*read);
  passOn();
}

void ReadingQueue::write(const OCR::RecognitionWithBarcodes& read) {
  // A code can hold a secret as well as a line of text.
  const auto kinds = Sensitive::kindsIn(read.recognition.text + "\n" + Text::joined(read.barcodes, '\n'));
  const Database::QuickCommits quickly(database_);
  database_.setOCR(batch_.currentID(), read.recognition.text, kinds);
  database_.setCodes(batch_.currentID(), read.barcodes);
}

void ReadingQueue::passOn() {
  const auto row = batch_.row();
  if (!row || row->ocrDone) hasProgress_ = true;
  batch_.passOn();
  if (!isRunning()) return end(hasProgress_ ? BatchEnd::Done : BatchEnd::NothingWritten);
  takeNextLater();
  Q_EMIT remainingChanged();
}

void ReadingQueue::end(BatchEnd end) {
  batch_.clear();
  Q_EMIT remainingChanged();
  Q_EMIT finished(end);
}

}  // namespace Nimbrel
