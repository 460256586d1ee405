#include "Foundation/FilePath.h"
#include "Foundation/Formats.h"
#include "Model/ShotFile.h"
#include "Platform/NewFile.h"
#include "Store/ShrinkRun.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include <memory>
#include <utility>

namespace Nimbrel {

namespace {

std::string heicPath(const std::string& path) {
  const auto name = std::string(FilePath::baseName(path)) + ".heic";
  return ShotFile::uniqueURL(FilePath::join(FilePath::folder(path), name));
}

}  // namespace

void Store::recompress(const ShotList& shots) {
  const Operation operation(*this);
  const auto run = newShrinkRun(shots);
  while (!run->isOver()) run->takeNext();
  trashReplaced(run->outcome());
}

void Store::recompressInBackground(const ShotList& shots) {
  if (shrinkRun_) {
    waitingShrinks_.push_back(shots);
    return;
  }
  shrinkRun_ = newShrinkRun(shots);
  continueShrinking();
}

void Store::cancelRecompress() {
  if (!shrinkRun_) return;
  waitingShrinks_.clear();
  endShrinking();
}

std::shared_ptr<ShrinkRun> Store::newShrinkRun(const ShotList& shots) {
  return std::make_shared<ShrinkRun>(
      shrinkThreads_, shots, settings_.heicQuality(),
      [this](const Shot& shot, const std::string& heic) { return replaceFile(shot, heic); });
}

void Store::continueShrinking() {
  if (shrinkRun_->isOver()) return endShrinking();
  const Operation operation(*this);
  publish(shrinkProgress_, std::optional(shrinkRun_->progress()), Fact::shrinkProgress);
  shrinkRun_->whenReady(this, [this, awaited = std::weak_ptr(shrinkRun_)] {
    // A run that was cancelled meanwhile has ended.
    const auto run = awaited.lock();
    if (!run || run != shrinkRun_) return;
    run->takeNext();
    if (run == shrinkRun_) continueShrinking();
  });
}

void Store::endShrinking() {
  const Operation operation(*this);
  const auto run = std::exchange(shrinkRun_, nullptr);
  publish(shrinkProgress_, std::optional<ShrinkProgress>(), Fact::shrinkProgress);
  trashReplaced(run->outcome());
  if (waitingShrinks_.empty()) return;
  const auto next = std::move(waitingShrinks_.front());
  waitingShrinks_.pop_front();
  recompressInBackground(next);
}

bool Store::replaceFile(const Shot& shot, const std::string& heic) {
  if (!isWhereItWas(shot)) return false;
  const auto target = heicPath(shot.path);
  announce(target);
  if (NewFile::write(target, heic)) return false;
  // Until it is in the Trash, no scan of another process is to take the old file for a new shot.
  database_->ignore(shot.path);
  // Each commit waits for the disk: the old files go only once a crash would find the new ones in the catalogue.
  database_->setPath(shot.id, target, shot.filed ? Database::Filed::Yes : Database::Filed::No);
  const auto row = database_->shot(shot.id);
  if (!row || row->path != target) {
    database_->unignore(shot.path);
    NewFile::discard(target);
    return false;
  }
  database_->setBytes(shot.id, static_cast<std::int64_t>(heic.size()));
  Q_EMIT fileReplaced(shot.path);
  return true;
}

void Store::trashReplaced(const ShrinkRun::Outcome& outcome) {
  if (outcome.oldFiles.empty()) {
    setStatus("Nothing to shrink");
    reload();
    return;
  }
  const auto count = outcome.oldFiles.size();
  std::vector<std::string> paths;
  for (const auto& [path, state] : outcome.oldFiles) {
    // What was saved over it since is nowhere else: it stays, as a new shot.
    if (stateOfFile(path) != state) {
      database_->unignore(path);
      continue;
    }
    announce(path);
    paths.push_back(path);
  }
  context_.services.trash->recycle(
      this, paths, [this, count, paths, saved = outcome.bytesSaved](const std::optional<Error>&) {
        const Operation told(*this);
        for (const auto& path : paths) database_->unignore(path);
        reload();
        setStatus("Shrank " + std::to_string(count) + " · saved " + Formats::byteCount(saved));
      });
}

}  // namespace Nimbrel
