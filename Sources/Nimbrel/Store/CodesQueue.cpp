#include "Store/CodesQueue.h"

#include "Analysis/OCR.h"
#include "Platform/FileSystem.h"

#include <limits>

namespace Nimbrel {

namespace {

constexpr int batchSize = 400;

}  // namespace

CodesQueue::CodesQueue(Database& database, PictureReader& reader, QObject* parent)
    : QObject(parent), database_(database), reader_(reader) {}

void CodesQueue::start() { start(batchSize); }

void CodesQueue::startAll() { start(std::numeric_limits<int>::max()); }

void CodesQueue::start(int limit) {
  if (isRunning()) return;
  batch_ = database_.pendingCodes(limit);
  next_ = 0;
  if (!batch_.empty()) takeNextLater();
}

void CodesQueue::takeNextLater() { QMetaObject::invokeMethod(this, &CodesQueue::takeNext, Qt::QueuedConnection); }

void CodesQueue::takeNext() {
  // Text recognition, here or in another process, may have been faster.
  const auto row = database_.needsCodes(currentID()) ? database_.shot(currentID()) : std::nullopt;
  if (!row) return passOn();
  if (!FileSystem::exists(row->path)) {
    write({});
    return passOn();
  }
  OCR::barcodes(this, reader_, row->path, [this, path = row->path](const auto& codes) { take(path, codes); });
}

void CodesQueue::take(const std::string& path, const std::optional<std::vector<std::string>>& codes) {
  if (!codes) return end();
  const auto row = database_.shot(currentID());
  // Moved meanwhile, or its id was given to another file: what was found may not be this row's.
  if (row && row->path != path) return takeNextLater();
  if (row) write(*codes);
  passOn();
}

void CodesQueue::write(const std::vector<std::string>& codes) {
  const Database::QuickCommits quickly(database_);
  database_.setCodes(currentID(), codes);
}

void CodesQueue::passOn() {
  ++next_;
  if (next_ == batch_.size()) return end();
  takeNextLater();
}

void CodesQueue::end() {
  batch_.clear();
  Q_EMIT finished();
}

}  // namespace Nimbrel
