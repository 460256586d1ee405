#include "Store/ReadingQueue.h"

#include "Analysis/Sensitive.h"
#include "Foundation/Text.h"
#include "Platform/FileSystem.h"

namespace Nimbrel {

namespace {

constexpr int batchSize = 200;

}  // namespace

ReadingQueue::ReadingQueue(Database& database, PictureReader& reader, QObject* parent)
    : QObject(parent), database_(database), reader_(reader) {}

void ReadingQueue::start() {
  if (isRunning()) return;
  batch_ = database_.pendingOCR(batchSize);
  if (batch_.empty()) return;
  next_ = 0;
  hasProgress_ = false;
  takeNextLater();
  Q_EMIT remainingChanged();
}

void ReadingQueue::takeNextLater() { QMetaObject::invokeMethod(this, &ReadingQueue::takeNext, Qt::QueuedConnection); }

void ReadingQueue::takeNext() {
  // The row as it is by now: it may have been removed, filed under another path, or read by another process.
  const auto row = database_.shot(currentID());
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
  const auto row = database_.shot(currentID());
  // Moved meanwhile, or its id was given to another file: what was read may not be this row's.
  if (row && row->path != path) return takeNextLater();
  if (row) write(*read);
  passOn();
}

void ReadingQueue::write(const OCR::RecognitionWithBarcodes& read) {
  // A code can hold a secret as well as a line of text.
  const auto kinds = Sensitive::kindsIn(read.recognition.text + "\n" + Text::joined(read.barcodes, '\n'));
  const Database::QuickCommits quickly(database_);
  database_.setOCR(currentID(), read.recognition.text, kinds);
  database_.setCodes(currentID(), read.barcodes);
}

void ReadingQueue::passOn() {
  const auto row = database_.shot(currentID());
  if (!row || row->ocrDone) hasProgress_ = true;
  ++next_;
  if (next_ == batch_.size()) return end(hasProgress_ ? BatchEnd::Done : BatchEnd::NothingWritten);
  takeNextLater();
  Q_EMIT remainingChanged();
}

void ReadingQueue::end(BatchEnd end) {
  batch_.clear();
  Q_EMIT remainingChanged();
  Q_EMIT finished(end);
}

}  // namespace Nimbrel
