#include "Linux/Files/WatchedRoots.h"

#include "Foundation/Log.h"
#include "Linux/Files/NetworkFileSystem.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int longestRetryPause = 64;

std::string onOneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

auto predicateOf(const InotifyOptions& options) {
  return options.sendsNoEvents != nullptr ? options.sendsNoEvents : &NetworkFileSystem::holds;
}

}  // namespace

WatchedRoots::WatchedRoots(Inotify& inotify, const InotifyOptions& options, std::function<void()> onChange)
    : onChange_(std::move(onChange)),
      tree_(inotify, predicateOf(options)),
      poller_(options.polledFolderInterval, predicateOf(options),
              [this](Root root, const FolderLook& look, bool changed) { looked(root, look, changed); }) {
  missingTimer_.setInterval(std::chrono::ceil<std::chrono::milliseconds>(options.missingFolderInterval));
  QObject::connect(&missingTimer_, &QTimer::timeout, &missingTimer_, [this] { lookForMissing(); });
}

void WatchedRoots::set(const std::vector<WatchedFolder>& folders) {
  // First of all, so that nothing is mounted unseen between the check of a folder and this.
  if (!folders.empty() && !mounts_) mounts_ = std::make_unique<MountEvents>([this] { checkMounts(); });
  dropAllBut(folders);
  for (const auto& folder : folders) addOrCheck(folder);
  startOrStopHelpers();
}

void WatchedRoots::dropAllBut(const std::vector<WatchedFolder>& folders) {
  for (auto entry = roots_.begin(); entry != roots_.end();) {
    if (std::find(folders.begin(), folders.end(), entry->second.folder) != folders.end()) {
      ++entry;
      continue;
    }
    release(entry->first);
    entry = roots_.erase(entry);
  }
}

void WatchedRoots::addOrCheck(const WatchedFolder& folder) {
  for (auto& [root, watched] : roots_) {
    if (watched.folder != folder) continue;
    if (watched.state == State::Missing) retry(root, watched);
    if (watched.state == State::Watched && !tree_.stands(root, folder.path)) establishAgain(root, watched);
    return;
  }
  const Root root = nextRoot_++;
  establish(root, roots_[root] = {folder});
}

void WatchedRoots::folderAppeared(Root root, const std::string& path, const WatchTree::Found& found) {
  auto& watched = roots_.at(root);
  if (watched.state != State::Watched) return;
  const auto obstacle = tree_.addBelow(root, path, found);
  if (!obstacle) return;
  tree_.forget(root);
  settle(root, watched, obstacle);
  startOrStopHelpers();
  onChange_();
}

void WatchedRoots::folderChangedAttributes(Root root, const std::string& path, const WatchTree::Found& found) {
  // The change may have made it readable.
  if (!tree_.watches(root, path)) folderAppeared(root, path, found);
}

void WatchedRoots::folderWentAway(Root root, const std::string& path) { tree_.forgetBelow(root, path); }

void WatchedRoots::check(const std::set<Root>& suspects) {
  for (const Root root : suspects) {
    auto& watched = roots_.at(root);
    if (watched.state == State::Watched && !tree_.stands(root, watched.folder.path)) establishAgain(root, watched);
  }
  startOrStopHelpers();
}

void WatchedRoots::rebuild() {
  for (auto& [root, watched] : roots_) {
    if (watched.state == State::Watched) establishAgain(root, watched);
  }
  startOrStopHelpers();
}

void WatchedRoots::checkMounts() {
  for (auto& [root, watched] : roots_) {
    if (watched.state == State::Watched && !tree_.standsWhole(root, watched.folder.path)) establishAgain(root, watched);
  }
  poller_.lookAtAll();
  lookForMissing();
}

void WatchedRoots::lookForMissing() {
  for (auto& [root, watched] : roots_) {
    if (watched.state == State::Missing) retry(root, watched);
  }
  startOrStopHelpers();
}

void WatchedRoots::looked(Root root, const FolderLook& look, bool changed) {
  auto& watched = roots_.at(root);
  if (changed) onChange_();
  if (!look.stands) {
    establishAgain(root, watched);
  } else if (!look.sendsNoEvents && --watched.looksUntilRetry <= 0) {
    retry(root, watched);
  }
  startOrStopHelpers();
}

void WatchedRoots::establish(Root root, WatchedRoot& watched) {
  settle(root, watched, tree_.add(root, watched.folder));
}

void WatchedRoots::establishAgain(Root root, WatchedRoot& watched) {
  release(root);
  establish(root, watched);
  onChange_();
}

/// Tries to watch a folder that is not watched; nothing is done or said if it is to stay as it is.
void WatchedRoots::retry(Root root, WatchedRoot& watched) {
  const auto obstacle = tree_.add(root, watched.folder);
  const bool isMissing = obstacle && obstacle->kind == Obstacle::Kind::Missing;
  if (watched.state == State::Missing && isMissing) return;
  if (watched.state == State::Polled && obstacle && !isMissing) {
    watched.retryPause = std::min(2 * watched.retryPause, longestRetryPause);
    watched.looksUntilRetry = watched.retryPause;
    return;
  }
  poller_.remove(root);
  settle(root, watched, obstacle);
  onChange_();
}

void WatchedRoots::settle(Root root, WatchedRoot& watched, const std::optional<Obstacle>& obstacle) {
  if (!obstacle) {
    watched.state = State::Watched;
    told_.erase(watched.folder.path);
    return;
  }
  tell(watched.folder.path, obstacle->reason);
  if (obstacle->kind == Obstacle::Kind::Missing) {
    watched.state = State::Missing;
    return;
  }
  watched.state = State::Polled;
  watched.retryPause = 1;
  // The first look comes at once; it would be too early to ask again with it.
  watched.looksUntilRetry = 2;
  poller_.add(root, watched.folder);
}

void WatchedRoots::release(Root root) {
  tree_.forget(root);
  poller_.remove(root);
}

void WatchedRoots::tell(const std::string& path, const std::string& reason) {
  if (std::exchange(told_[path], reason) == reason) return;
  Log::write(onOneLine("Nimbrel: folder " + path + " cannot be watched (" + reason + "), it is looked at slowly"));
}

void WatchedRoots::startOrStopHelpers() {
  if (roots_.empty()) mounts_.reset();
  const bool anyMissing =
      std::any_of(roots_.begin(), roots_.end(), [](const auto& entry) { return entry.second.state == State::Missing; });
  if (!anyMissing) missingTimer_.stop();
  if (anyMissing && !missingTimer_.isActive()) missingTimer_.start();
}

}  // namespace Nimbrel
