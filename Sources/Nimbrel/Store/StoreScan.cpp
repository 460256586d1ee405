#include "Foundation/FilePath.h"
#include "Model/ShotFile.h"
#include "Platform/FileSystem.h"
#include "Platform/Process.h"
#include "Store/ScanPlan.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace Nimbrel {

namespace {

constexpr Seconds freshness{120};  ///< the age up to which the user may still be at it

}  // namespace

void Store::scan() {
  const Operation operation(*this);
  const auto indexed = database_->indexedPaths();
  const auto ignored = database_->ignoredPaths();
  const auto listing = listFolders(settings_.sourceFolders(), settings_.libraryFolder());
  const auto plan = planScan(listing, indexed, ignored, shots_);

  const auto added = applyScan(plan);
  reloadIfChanged();
  const auto newest = newestOf(added);
  if (!added.empty()) setStatus("Added " + std::to_string(added.size()) + " shot" + (added.size() == 1 ? "" : "s"));
  if (settings_.autoFile()) fileAll();
  startOCR();
  startHashing();
  startCodes();
  // What the first scan finds has come while nobody looked.
  if (std::exchange(hasScanned_, true) && newest) announceIfFresh(*newest);
}

std::vector<std::string> Store::applyScan(const ScanPlan& plan) {
  const Database::QuickCommits quickly(*database_);
  auto added = addNewFiles(plan.newInSources, Database::Filed::No);
  std::ranges::move(addNewFiles(plan.newInLibrary, Database::Filed::Yes), std::back_inserter(added));
  dropOrphans(plan.unseen);
  return added;
}

std::optional<ShotID> Store::newestOf(const std::vector<std::string>& paths) const {
  if (paths.empty()) return std::nullopt;
  const std::unordered_set<std::string_view> among(paths.begin(), paths.end());
  const Shot* newest = nullptr;
  for (const auto& shot : shots_) {
    if (among.contains(shot->path) && (newest == nullptr || shot->date > newest->date)) newest = shot.get();
  }
  return newest == nullptr ? std::nullopt : std::optional(newest->id);
}

void Store::announceIfFresh(ShotID id) {
  // It may have been filed meanwhile.
  const auto found = std::ranges::find_if(shots_, [id](const ShotPtr& shot) { return shot->id == id; });
  if (found == shots_.end()) return;
  const auto shot = *found;
  const auto age = now() - shot->date;
  if (age >= Seconds(0) && age <= freshness) Q_EMIT freshShotArrived(shot);
}

std::vector<std::string> Store::addNewFiles(const std::vector<std::string>& paths, Database::Filed filed) {
  std::vector<std::string> added;
  for (const auto& path : paths) {
    // What is left will be as new at the next start.
    if (Process::isEnding()) break;
    const bool counts = filed == Database::Filed::Yes || isScreenshot(path);
    if (counts && index(path, filed)) added.push_back(path);
  }
  return added;
}

void Store::dropOrphans(const ShotList& unseen) {
  for (const auto& shot : unseen) {
    if (Process::isEnding()) break;
    if (!FileSystem::exists(shot->path)) dropRowAt(*shot);
  }
}

Shot Store::newShot(const std::string& path, Database::Filed filed) const {
  const auto size = ShotFile::dimensions(path);
  const auto moment = now();
  Shot shot;
  shot.path = path;
  shot.name = FilePath::lastComponent(path);
  shot.date = ShotFile::created(path, moment);
  shot.added = moment;
  shot.bytes = ShotFile::size(path);
  shot.width = size.width;
  shot.height = size.height;
  shot.captureType = ShotFile::captureType(path);
  shot.filed = filed == Database::Filed::Yes;
  return shot;
}

Database::Filed Store::filedByPlace(std::string_view path) const {
  return path.starts_with(settings_.libraryFolder() + "/") ? Database::Filed::Yes : Database::Filed::No;
}

bool Store::index(const std::string& path, Database::Filed filed) {
  auto shot = newShot(path, filed);
  if (tracker_ && !shot.filed) {
    auto application = tracker_->appForCaptureAt(shot.date);
    shot.appAttributionTrusted = !application.name.empty();
    shot.appName = std::move(application.name);
    shot.bundleID = std::move(application.bundleID);
  }
  return database_->insert(shot) != 0;
}

void Store::scheduleRescan() { pendingRescan_.start(); }

void Store::restartWatching() {
  if (!watcher_) return;
  const auto library = settings_.libraryFolder();
  std::vector<std::string> libraries;
  if (FileSystem::exists(library)) libraries.push_back(library);
  watcher_->watch(settings_.sourceFolders(), libraries);
}

void Store::importFiles(const std::vector<std::string>& paths) {
  const Operation operation(*this);
  auto indexed = database_->indexedPaths();
  std::size_t imported = 0;
  const Database::QuickCommits quickly(*database_);
  for (const auto& path : paths) {
    if (!ShotFile::hasImageType(path) || FileSystem::isOtherThanFile(path)) continue;
    database_->unignore(path);
    if (indexed.contains(path) || !index(path, filedByPlace(path))) continue;
    indexed.insert(path);
    ++imported;
  }
  database_->waitForDisk();
  reload();
  setStatus(imported > 0 ? "Imported " + std::to_string(imported) : std::string("Nothing new to import"));
  startOCR();
}

}  // namespace Nimbrel
