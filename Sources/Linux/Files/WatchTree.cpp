#include "Linux/Files/WatchTree.h"

#include "Foundation/FilePath.h"
#include "Platform/FileSystem.h"

#include <sys/inotify.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace Nimbrel {

namespace {

constexpr std::uint32_t contentEvents =
    IN_CREATE | IN_CLOSE_WRITE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_ATTRIB;
// A folder that some program still holds open sends no event of its own when it is removed, but the one above does.
constexpr std::uint32_t parentEvents = IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t ancestorEvents = IN_DELETE_SELF | IN_MOVE_SELF;

Obstacle obstacleFrom(int error) {
  switch (error) {
    case ENOENT:
      return {Obstacle::Kind::Missing, "it is missing"};
    case ENOTDIR:
      return {Obstacle::Kind::Missing, "it is no folder"};
    case ELOOP:
    case ENAMETOOLONG:
      return {Obstacle::Kind::Missing, std::generic_category().message(error)};
    case ENOSPC:
    case EMFILE:
      return {Obstacle::Kind::LimitReached, "the system's limit for watching is reached"};
    case ENOMEM:
    case ENFILE:
      return {Obstacle::Kind::LimitReached, std::generic_category().message(error)};
    default:
      return {Obstacle::Kind::Refused, std::generic_category().message(error)};
  }
}

bool concernsOneFolder(const Obstacle& obstacle) {
  return obstacle.kind == Obstacle::Kind::Missing || obstacle.kind == Obstacle::Kind::Refused;
}

}  // namespace

std::optional<Obstacle> WatchTree::add(Root root, const WatchedFolder& folder) {
  auto obstacle = addContent(root, folder.path, Inotify::Links::Follow);
  if (!obstacle && folder.depth == WatchDepth::Recursive) {
    std::vector<std::string> pending;
    FileSystem::forEachEntry(folder.path, [&](std::string_view name, FileSystem::EntryKind kind) {
      if (kind == FileSystem::EntryKind::Folder) pending.push_back(FilePath::join(folder.path, name));
    });
    obstacle = addAll(root, std::move(pending), {});
  }
  if (obstacle) {
    forget(root);
  } else {
    addAncestors(root, folder.path);
  }
  return obstacle;
}

std::optional<Obstacle> WatchTree::addBelow(Root root, const std::string& path, const Found& found) {
  return addAll(root, {path}, found);
}

std::optional<Obstacle> WatchTree::addAll(Root root, std::vector<std::string> pending, const Found& found) {
  while (!pending.empty()) {
    const auto folder = std::move(pending.back());
    pending.pop_back();
    if (auto obstacle = addContent(root, folder, Inotify::Links::Refuse)) {
      if (concernsOneFolder(*obstacle)) continue;
      return obstacle;
    }
    // Listed once the watch is set, so that nothing comes in between.
    FileSystem::forEachEntry(folder, [&](std::string_view name, FileSystem::EntryKind kind) {
      if (!found && kind != FileSystem::EntryKind::Folder) return;
      auto path = FilePath::join(folder, name);
      if (found) found(path);
      if (kind == FileSystem::EntryKind::Folder) pending.push_back(std::move(path));
    });
  }
  return std::nullopt;
}

std::optional<Obstacle> WatchTree::addContent(Root root, const std::string& path, Inotify::Links links) {
  const auto added = inotify_.add(path, contentEvents, links);
  if (added.error != 0) return obstacleFrom(added.error);
  remember(added.watch, {root, Role::Content, path});
  if (!sendsNoEvents_(path)) return std::nullopt;
  return Obstacle{Obstacle::Kind::NoEvents, "its file system does not tell of all changes"};
}

void WatchTree::addAncestors(Root root, const std::string& path) {
  auto events = parentEvents;
  for (auto folder = FilePath::folder(path); !folder.empty(); folder = FilePath::folder(folder)) {
    const std::string ancestor(folder);
    // Where this cannot be set, the root's own events have to do.
    const auto added = inotify_.add(ancestor, events, Inotify::Links::Follow);
    if (added.error == 0) remember(added.watch, {root, Role::Ancestor, ancestor});
    events = ancestorEvents;
    if (folder == "/") break;
  }
}

void WatchTree::forget(Root root) {
  auto entry = watches_.lower_bound({root, Role::Content, {}});
  while (entry != watches_.end() && entry->first.root == root) entry = forget(entry);
}

void WatchTree::forgetBelow(Root root, const std::string& path) {
  const auto itself = watches_.find({root, Role::Content, path});
  if (itself != watches_.end()) forget(itself);
  const auto prefix = path + '/';
  auto entry = watches_.lower_bound({root, Role::Content, prefix});
  while (entry != watches_.end() && entry->first.root == root && entry->first.role == Role::Content &&
         entry->first.path.starts_with(prefix)) {
    entry = forget(entry);
  }
}

void WatchTree::forgetWatch(int watch) {
  for (const auto& place : placesOf(watch)) {
    const auto entry = watches_.find(place);
    if (entry != watches_.end()) forget(entry);
  }
}

WatchTree::Entry WatchTree::forget(Entry entry) {
  const int watch = entry->second;
  auto& places = places_[watch];
  std::erase(places, &entry->first);
  if (places.empty()) {
    places_.erase(watch);
    inotify_.remove(watch);
  }
  return watches_.erase(entry);
}

void WatchTree::remember(int watch, const Place& place) {
  const auto known = watches_.find(place);
  if (known != watches_.end()) {
    if (known->second == watch) return;
    forget(known);
  }
  const auto entry = watches_.emplace(place, watch).first;
  places_[watch].push_back(&entry->first);
}

std::vector<WatchTree::Place> WatchTree::placesOf(int watch) const {
  std::vector<Place> places;
  if (const auto found = places_.find(watch); found != places_.end()) {
    for (const auto* place : found->second) places.push_back(*place);
  }
  return places;
}

bool WatchTree::watches(Root root, const std::string& path) const {
  return watches_.contains({root, Role::Content, path});
}

bool WatchTree::stands(Root root, const std::string& path) {
  const auto entry = watches_.find({root, Role::Content, path});
  return entry != watches_.end() && stands(entry->first, entry->second, Inotify::Links::Follow);
}

bool WatchTree::standsWhole(Root root, const std::string& path) {
  if (!stands(root, path)) return false;
  auto entry = watches_.lower_bound({root, Role::Content, {}});
  for (; entry != watches_.end() && entry->first.root == root && entry->first.role == Role::Content; ++entry) {
    const bool isRoot = entry->first.path == path;
    if (!isRoot && !stands(entry->first, entry->second, Inotify::Links::Refuse)) return false;
  }
  return true;
}

/// Watching a folder once more gives the watch that it has, so another one means another folder.
bool WatchTree::stands(const Place& place, int watch, Inotify::Links links) {
  const auto added = inotify_.add(place.path, contentEvents, links);
  if (added.watch == watch) return true;
  if (added.error == 0 && !places_.contains(added.watch)) inotify_.remove(added.watch);
  return false;
}

}  // namespace Nimbrel
