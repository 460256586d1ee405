#include "Store/CodesQueue.h"

#include "Analysis/OCR.h"
#include "Platform/FileSystem.h"

namespace Nimbrel {

namespace {

constexpr int batchSize = 400;

}  // namespace

CodesQueue::CodesQueue(Database& database, PictureReader& reader, QObject* parent)
    : QObject(parent), database_(database), reader_(reader), batch_(database) {}

void CodesQueue::start() { start(batchSize); }

void CodesQueue::startAll() { start(ShotBatch::unlimited); }

void CodesQueue::start(int limit) {
  if (isRunning()) return;
  batch_.fill(database_.pendingCodes(limit));
  if (isRunning()) takeNextLater();
}

void CodesQueue::takeNextLater() { QMetaObject::invokeMethod(this, &CodesQueue::takeNext, Qt::QueuedConnection); }

void CodesQueue::takeNext() {
  // Text recognition, here or in another process, may have been faster.
  const auto row = database_.needsCodes(batch_.currentID()) ? batch_.row() : std::nullopt;
  if (!row) return passOn();
  if (!FileSystem::exists(row->path)) {
    write({});
    return passOn();
  }
  OCR::barcodes(this, reader_, row->path, [this, path = row->path](const auto& codes) { take(path, codes); });
}

void CodesQueue::take(const std::string& path, const std::optional<std::vector<std::string>>& codes) {
  if (!codes) return end();
  if (batch_.hasMovedFrom(path)) return takeNextLater();
  if (batch_.row()) write(*codes);
  passOn();
}

void CodesQueue::write(const std::vector<std::string>& codes) {
  const Database::QuickCommits quickly(database_);
  database_.setCodes(batch_.currentID(), codes);
}

void CodesQueue::passOn() {
  batch_.passOn();
  if (!isRunning()) return end();
  takeNextLater();
}

void CodesQueue::end() {
  batch_.clear();
  Q_EMIT finished();
}

}  // namespace Nimbrel
