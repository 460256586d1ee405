#include "Linux/Files/InotifyFileEvents.h"

#include "Foundation/FilePath.h"
#include "Linux/Files/Inotify.h"
#include "Linux/Files/OwnChanges.h"
#include "Linux/Files/Throttle.h"
#include "Linux/Files/WatchedRoots.h"

#include <sys/inotify.h>

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace Nimbrel {

namespace {

using Root = WatchTree::Root;
using Place = WatchTree::Place;
using Role = WatchTree::Role;

std::vector<WatchedFolder> normalised(const std::vector<WatchedFolder>& folders) {
  std::vector<WatchedFolder> result;
  for (const auto& folder : folders) {
    WatchedFolder plain{FilePath::withoutTrailingSlashes(folder.path), folder.depth};
    if (std::find(result.begin(), result.end(), plain) == result.end()) result.push_back(std::move(plain));
  }
  return result;
}

class InotifyFileEvents final : public FileEvents {
 public:
  explicit InotifyFileEvents(const InotifyOptions& options);

  void watch(std::vector<WatchedFolder> folders, Seconds latency, Callback onChange) override;
  void expectOwnChange(const std::string& path) override { ownChanges_.announce(path); }

 private:
  void readEvents();
  void handle(const Inotify::Event& event);
  void handleOfFolderItself(const Place& place, std::uint32_t mask);
  void followSubfolder(Root root, const std::string& path, std::uint32_t mask);

  OwnChanges ownChanges_;
  Throttle throttle_;
  Inotify inotify_;
  WatchedRoots roots_;
  /// What the events that are being read leave to be done after them.
  std::set<Root> suspects_;
  bool mustRebuild_ = false;
};

InotifyFileEvents::InotifyFileEvents(const InotifyOptions& options)
    : inotify_([this] { readEvents(); }), roots_(inotify_, options, [this] { throttle_.noteChange(); }) {}

void InotifyFileEvents::watch(std::vector<WatchedFolder> folders, Seconds latency, Callback onChange) {
  throttle_.set(std::move(onChange), latency);
  roots_.set(normalised(folders));
  if (!folders.empty()) return;
  inotify_.close();
  throttle_.stop();
}

void InotifyFileEvents::readEvents() {
  inotify_.read([this](const Inotify::Event& event) { handle(event); });
  roots_.check(std::exchange(suspects_, {}));
  if (std::exchange(mustRebuild_, false)) roots_.rebuild();
}

void InotifyFileEvents::handle(const Inotify::Event& event) {
  // Beneath a folder that was unmounted another one comes to light.
  if ((event.mask & (IN_Q_OVERFLOW | IN_UNMOUNT)) != 0) mustRebuild_ = true;
  bool counts = false;
  bool isOwn = false;
  for (const auto& place : roots_.placesOf(event.watch)) {
    if (event.name.empty()) {
      handleOfFolderItself(place, event.mask);
      continue;
    }
    const auto path = FilePath::join(place.path, event.name);
    const auto& folder = roots_.folder(place.root);
    if (place.role == Role::Ancestor) {
      if (path == folder.path) suspects_.insert(place.root);
      continue;
    }
    if (event.name.front() == '.') continue;
    counts = true;
    isOwn = isOwn || ownChanges_.covers(path, event.mask);
    const bool isFolder = (event.mask & IN_ISDIR) != 0;
    if (isFolder && folder.depth == WatchDepth::Recursive) followSubfolder(place.root, path, event.mask);
  }
  if (counts && !isOwn) throttle_.noteChange();
  if ((event.mask & IN_IGNORED) != 0) roots_.watchWentAway(event.watch);
}

void InotifyFileEvents::handleOfFolderItself(const Place& place, std::uint32_t mask) {
  const bool isRoot = place.role == Role::Content && place.path == roots_.folder(place.root).path;
  if (!isRoot && place.role == Role::Content) return;
  if ((mask & (IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED)) != 0) suspects_.insert(place.root);
  if ((mask & IN_ATTRIB) != 0 && isRoot) throttle_.noteChange();
}

void InotifyFileEvents::followSubfolder(Root root, const std::string& path, std::uint32_t mask) {
  const auto found = [this](const std::string& entry) {
    if (!ownChanges_.covers(entry, IN_CREATE)) throttle_.noteChange();
  };
  if ((mask & (IN_DELETE | IN_MOVED_FROM)) != 0) roots_.folderWentAway(root, path);
  if ((mask & (IN_CREATE | IN_MOVED_TO)) != 0) roots_.folderAppeared(root, path, found);
  if ((mask & IN_ATTRIB) != 0) roots_.folderChangedAttributes(root, path, found);
}

}  // namespace

std::unique_ptr<FileEvents> makeInotifyFileEvents(InotifyOptions options) {
  return std::make_unique<InotifyFileEvents>(options);
}

}  // namespace Nimbrel
