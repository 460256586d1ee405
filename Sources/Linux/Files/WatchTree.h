#pragma once

#include "Linux/Files/Inotify.h"
#include "Platform/FileEvents.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace Nimbrel {

/// Why a folder is not watched.
struct Obstacle {
  enum class Kind {
    Missing,       ///< no folder stands there
    NoEvents,      ///< its file system does not tell of all changes
    LimitReached,  ///< the system sets no more watches
    Refused,       ///< the system sets none for this folder, as a rule for want of permission
  };
  Kind kind = Kind::Missing;
  /// In words fit for the log.
  std::string reason;
};

/// Which inotify watch stands for which folders. A watch may stand for several: a folder may be in the list by itself
/// and as a part of another, or be reached by two paths. Main thread only.
class WatchTree {
 public:
  /// Names a folder of the list.
  using Root = int;

  enum class Role {
    Content,   ///< its entries count
    Ancestor,  ///< it holds a folder of the list, at whatever depth, and shows when that is taken away
  };

  struct Place {
    Root root = 0;
    Role role = Role::Content;
    std::string path;

    bool operator<(const Place& other) const {
      return std::tie(root, role, path) < std::tie(other.root, other.role, other.path);
    }
  };

  /// Called for each visible entry of a folder that has just come under watch.
  using Found = std::function<void(const std::string& path)>;

  WatchTree(Inotify& inotify, bool (*sendsNoEvents)(const std::string& path))
      : inotify_(inotify), sendsNoEvents_(sendsNoEvents) {}

  /// Watches a folder of the list, with all below it if it is watched in depth. With an obstacle nothing stays watched.
  [[nodiscard]] std::optional<Obstacle> add(Root root, const WatchedFolder& folder);

  /// Watches a folder that has appeared below a root, and all below it. What is gone again or cannot be read is passed
  /// over. An obstacle concerns the root as a whole, which the caller is to forget.
  [[nodiscard]] std::optional<Obstacle> addBelow(Root root, const std::string& path, const Found& found);

  void forget(Root root);
  void forgetBelow(Root root, const std::string& path);
  /// For a watch that the kernel has removed.
  void forgetWatch(int watch);

  /// By value: what is done with them may change the tree.
  [[nodiscard]] std::vector<Place> placesOf(int watch) const;

  [[nodiscard]] bool watches(Root root, const std::string& path) const;

  /// Whether the watched folder is still what stands at the path of this root.
  [[nodiscard]] bool stands(Root root, const std::string& path);
  /// Whether the same holds for all folders below it as well.
  [[nodiscard]] bool standsWhole(Root root, const std::string& path);

 private:
  using Entry = std::map<Place, int>::iterator;

  [[nodiscard]] std::optional<Obstacle> addContent(Root root, const std::string& path, Inotify::Links links);
  [[nodiscard]] std::optional<Obstacle> addAll(Root root, std::vector<std::string> pending, const Found& found);
  void addAncestors(Root root, const std::string& path);
  [[nodiscard]] bool stands(const Place& place, int watch, Inotify::Links links);
  void remember(int watch, const Place& place);
  Entry forget(Entry entry);

  Inotify& inotify_;
  bool (*sendsNoEvents_)(const std::string& path);
  std::map<Place, int> watches_;
  std::unordered_map<int, std::vector<const Place*>> places_;
};

}  // namespace Nimbrel
