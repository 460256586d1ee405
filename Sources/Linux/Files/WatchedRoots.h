#pragma once

#include "Linux/Files/FolderPoller.h"
#include "Linux/Files/InotifyFileEvents.h"
#include "Linux/Files/MountEvents.h"
#include "Linux/Files/WatchTree.h"

#include <QTimer>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Nimbrel {

/// The folders of the list, each of which is watched, missing or polled at any time, and how it gets from one state to
/// the next. Main thread only.
class WatchedRoots {
 public:
  using Root = WatchTree::Root;

  /// `onChange` is called for changes that are seen without an event. It must not call back into this object.
  WatchedRoots(Inotify& inotify, const InotifyOptions& options, std::function<void()> onChange);

  /// Keeps the folders in the list as they are, lets go of all others, and takes on those that are new.
  void set(const std::vector<WatchedFolder>& folders);

  [[nodiscard]] const WatchedFolder& folder(Root root) const { return roots_.at(root).folder; }
  [[nodiscard]] std::vector<WatchTree::Place> placesOf(int watch) const { return tree_.placesOf(watch); }

  /// What events have told about a folder below a recursive root, of which it becomes or ceases to be a part.
  void folderAppeared(Root root, const std::string& path, const WatchTree::Found& found);
  void folderChangedAttributes(Root root, const std::string& path, const WatchTree::Found& found);
  void folderWentAway(Root root, const std::string& path);
  void watchWentAway(int watch) { tree_.forgetWatch(watch); }

  /// Looks whether these folders are still the ones that are watched.
  void check(const std::set<Root>& suspects);
  /// For when events were lost.
  void rebuild();

 private:
  enum class State { Watched, Missing, Polled };

  struct WatchedRoot {
    WatchedFolder folder;
    State state = State::Missing;
    /// When polled: the looks until watches are asked for again, and how many there were the last time.
    int looksUntilRetry = 0;
    int retryPause = 1;
  };

  void dropAllBut(const std::vector<WatchedFolder>& folders);
  void addOrCheck(const WatchedFolder& folder);
  void checkMounts();
  void lookForMissing();
  void looked(Root root, const FolderLook& look, bool changed);

  void establish(Root root, WatchedRoot& watched);
  void establishAgain(Root root, WatchedRoot& watched);
  void retry(Root root, WatchedRoot& watched);
  void settle(Root root, WatchedRoot& watched, const std::optional<Obstacle>& obstacle);
  void release(Root root);
  void tell(const std::string& path, const std::string& reason);
  void startOrStopHelpers();

  std::function<void()> onChange_;
  WatchTree tree_;
  std::map<Root, WatchedRoot> roots_;
  Root nextRoot_ = 1;
  /// What was said about folders that are not watched, so that it is said once.
  std::map<std::string, std::string> told_;
  QTimer missingTimer_;
  std::unique_ptr<MountEvents> mounts_;
  FolderPoller poller_;
};

}  // namespace Nimbrel
