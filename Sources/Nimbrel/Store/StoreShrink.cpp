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

}  // namespace

void Store::recompress(const ShotList& given) {
  const Operation operation(*this);
  const Database::QuickCommits quickly(*database_);
  ShotList shots;
  std::vector<HeicEncodings::Picture> pictures;
  for (const auto& shot : given) {
    if (!canShrink(*shot)) continue;
    shots.push_back(shot);
    pictures.push_back({.path = shot->path, .limit = shot->bytes});
  }

  HeicEncodings encodings(std::move(pictures), settings_.heicQuality());
  Shrinkage shrinkage;
  for (const auto& shot : shots) {
    if (Process::isEnding()) break;
    if (const auto file = encodings.next()) replaceFile(*shot, *file, shrinkage);
  }
  trashReplaced(std::move(shrinkage));
}

void Store::replaceFile(const Shot& shot, const std::string& heic, Shrinkage& shrinkage) {
  if (!isWhereItWas(shot)) return;
  const auto target = heicPath(shot.path);
  announce(target);
  if (NewFile::write(target, heic)) return;
  database_->setPath(shot.id, target, shot.filed ? Database::Filed::Yes : Database::Filed::No);
  const auto row = database_->shot(shot.id);
  if (!row || row->path != target) {
    NewFile::discard(target);
    return;
  }
  const auto size = static_cast<std::int64_t>(heic.size());
  database_->setBytes(shot.id, size);
  shrinkage.oldPaths.push_back(shot.path);
  shrinkage.bytesSaved += shot.bytes - size;
}

void Store::trashReplaced(Shrinkage shrinkage) {
  if (shrinkage.oldPaths.empty()) {
    setStatus("Nothing to shrink");
    reload();
    return;
  }
  // The old files go only once a crash would find the new ones, in the catalogue as well.
  database_->waitForDisk();
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
