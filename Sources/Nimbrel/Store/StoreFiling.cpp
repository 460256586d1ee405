#include "Analysis/ContentGrouping.h"
#include "Foundation/FilePath.h"
#include "Foundation/Text.h"
#include "Model/ShotFile.h"
#include "Platform/FileMove.h"
#include "Platform/FileSystem.h"
#include "Platform/Process.h"
#include "Store/LibraryName.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

namespace Nimbrel {

namespace {

constexpr std::string_view fallbackExtension = "png";

/// What keeps a text from being the name of a file in the same folder.
std::optional<Error> faultOfName(std::string_view name) {
  if (name.find('/') != std::string_view::npos) return Error{"A name cannot hold a slash"};
  if (name == "." || name == "..") return Error{"This name stands for a folder"};
  return std::nullopt;
}

}  // namespace

std::string Store::libraryName(const Shot& shot) const {
  if (!settings_.renameOnFile()) return shot.name;
  const auto extension = FilePath::extension(shot.path);
  const auto group = ContentGroup::forShot(shot);
  return Nimbrel::libraryName(
             {.application = group.kind == ContentGroup::Kind::unknown ? std::string_view() : group.title,
              .title = shot.titleGuess(),
              .date = shot.date,
              .extension = extension.empty() ? fallbackExtension : extension})
      .value_or(shot.name);
}

void Store::file(const ShotList& shots) {
  const Operation operation(*this);
  const Database::QuickCommits quickly(*database_);
  std::size_t filed = 0;
  for (const auto& shot : shots) {
    if (Process::isEnding()) break;
    if (shot->filed) continue;
    if (const auto failure = fileOne(*shot)) {
      const auto label = isProtected(*shot) ? std::string("sensitive screenshot") : shot->name;
      setStatus("Could not file " + label + ": " + failure->message);
      continue;
    }
    ++filed;
  }
  if (filed == 0) return;
  database_->waitForDisk();
  reload();
  // New folders may be there to be watched, even the library itself.
  restartWatching();
  setStatus("Filed " + std::to_string(filed) + " shot" + (filed == 1 ? "" : "s") + " into the library");
}

void Store::fileAll() {
  ShotList inbox;
  for (const auto& shot : shots_) {
    if (!shot->filed) inbox.push_back(shot);
  }
  file(inbox);
}

std::optional<Error> Store::fileOne(const Shot& shot) {
  const auto target = settings_.libraryLocation(shot.date, libraryName(shot));
  if (auto failure = makeFolder(std::string(FilePath::folder(target)))) return failure;
  const auto moved = moveFile(shot, target);
  if (!moved) return moved.error();
  database_->setPath(shot.id, moved.value(), Database::Filed::Yes);
  return std::nullopt;
}

void Store::rename(const Shot& shot, std::string_view text) {
  const Operation operation(*this);
  std::string name(Text::trimmed(text));
  if (name.empty() || name == shot.name) return;
  const auto extension = FilePath::extension(shot.path);
  if (FilePath::extension(name).empty() && !extension.empty()) name.append(".").append(extension);

  const auto fault = faultOfName(name);
  const auto moved =
      fault ? Result<std::string>(*fault) : moveFile(shot, FilePath::join(FilePath::folder(shot.path), name));
  if (!moved) {
    setStatus("Rename failed: " + moved.error().message);
    return;
  }
  database_->setPath(shot.id, moved.value(), shot.filed ? Database::Filed::Yes : Database::Filed::No);
  reload();
}

std::optional<Error> Store::makeFolder(const std::string& path) {
  for (auto missing = path; !missing.empty() && !FileSystem::exists(missing); missing = FilePath::folder(missing)) {
    announce(missing);
  }
  return FileMove::createFolders(path);
}

Result<std::string> Store::moveFile(const Shot& shot, const std::string& target) {
  // Another process may have moved it, and another file may stand where it was, since the shot was read.
  const auto row = database_->shot(shot.id);
  if (!row || row->path != shot.path) return Error{"It has been moved meanwhile"};
  auto free = ShotFile::uniqueURL(target);
  announce(shot.path);
  announce(free);
  if (auto failure = FileMove::move(shot.path, free)) return std::move(*failure);
  return free;
}

void Store::announce(const std::string& path) {
  if (isBackgroundWorker()) context_.services.fileEvents->expectOwnChange(path);
}

}  // namespace Nimbrel
