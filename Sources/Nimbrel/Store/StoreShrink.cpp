#include "Foundation/FilePath.h"
#include "Foundation/Formats.h"
#include "Foundation/Text.h"
#include "Model/ShotFile.h"
#include "Platform/FileSystem.h"
#include "Platform/NewFile.h"
#include "Platform/Process.h"
#include "Store/HeicEncodings.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

namespace Nimbrel {

namespace {

constexpr std::string_view heicExtension = "heic";

bool canShrink(const Shot& shot) {
  return Text::lowered(FilePath::extension(shot.path)) != heicExtension && FileSystem::exists(shot.path);
}

std::string heicPath(const std::string& path) {
  const auto name = std::string(FilePath::baseName(path)).append(".").append(heicExtension);
  return ShotFile::uniqueURL(FilePath::join(FilePath::folder(path), name));
}

/// What tells whether a file was written to.
struct FileState {
  std::optional<Timestamp> modified;
  std::optional<std::int64_t> size;

  bool operator==(const FileState&) const = default;
};

FileState stateOf(const std::string& path) {
  return {.modified = FileSystem::modificationDate(path), .size = FileSystem::size(path)};
}

}  // namespace

void Store::recompress(const ShotList& given) {
  const Operation operation(*this);
  ShotList shots;
  std::vector<FileState> states;
  std::vector<HeicEncodings::Picture> pictures;
  for (const auto& shot : given) {
    if (!canShrink(*shot)) continue;
    shots.push_back(shot);
    states.push_back(stateOf(shot->path));
    pictures.push_back({.path = shot->path, .limit = shot->bytes});
  }

  HeicEncodings encodings(std::move(pictures), settings_.heicQuality());
  Shrinkage shrinkage;
  for (std::size_t i = 0; i < shots.size() && !Process::isEnding(); ++i) {
    const auto& shot = *shots[i];
    const auto heic = encodings.next();
    // What was saved over the picture meanwhile is not in the new file.
    if (!heic || stateOf(shot.path) != states[i] || !replaceFile(shot, *heic)) continue;
    shrinkage.oldPaths.push_back(shot.path);
    shrinkage.bytesSaved += shot.bytes - static_cast<std::int64_t>(heic->size());
  }
  trashReplaced(std::move(shrinkage));
}

bool Store::replaceFile(const Shot& shot, const std::string& heic) {
  if (!isWhereItWas(shot)) return false;
  const auto target = heicPath(shot.path);
  announce(target);
  if (NewFile::write(target, heic)) return false;
  // Each commit waits for the disk: the old files go only once a crash would find the new ones in the catalogue.
  database_->setPath(shot.id, target, shot.filed ? Database::Filed::Yes : Database::Filed::No);
  const auto row = database_->shot(shot.id);
  if (!row || row->path != target) {
    NewFile::discard(target);
    return false;
  }
  database_->setBytes(shot.id, static_cast<std::int64_t>(heic.size()));
  return true;
}

void Store::trashReplaced(Shrinkage shrinkage) {
  if (shrinkage.oldPaths.empty()) {
    setStatus("Nothing to shrink");
    reload();
    return;
  }
  const auto count = shrinkage.oldPaths.size();
  for (const auto& path : shrinkage.oldPaths) announce(path);
  context_.services.trash->recycle(
      this, std::move(shrinkage.oldPaths), [this, count, saved = shrinkage.bytesSaved](const std::optional<Error>&) {
        const Operation told(*this);
        reload();
        setStatus("Shrank " + std::to_string(count) + " · saved " + Formats::byteCount(saved));
      });
}

}  // namespace Nimbrel
