#pragma once

#include "Foundation/Timestamp.h"

#include <functional>
#include <string>
#include <vector>

namespace Nimbrel {

enum class WatchDepth {
  Flat,       ///< the folder's own entries
  Recursive,  ///< all folders below it as well, also those that come later; links to folders are not followed
};

struct WatchedFolder {
  std::string path;
  WatchDepth depth = WatchDepth::Flat;

  bool operator==(const WatchedFolder&) const = default;
};

/// Tells that something changed in a set of folders, and nothing more: whoever listens looks at the disk itself.
/// Main thread only.
class FileEvents {
 public:
  using Callback = std::function<void()>;

  virtual ~FileEvents() = default;

  /// Watches these folders from now on, in place of all former ones; an empty list ends the watching. `onChange` is
  /// called on the main thread: at once for the first change after a quiet time, and at most every `latency` seconds
  /// while changes go on. Hidden entries need not count. A folder that cannot be watched (it is missing, the system's
  /// limit is reached, its file system sends no events) is logged once and looked at slowly instead, until it can be.
  virtual void watch(std::vector<WatchedFolder> folders, Seconds latency, Callback onChange) = 0;

  /// Announces a change that this process is about to make at `path`, so that it does not call back. The announcement
  /// is used up by the change, and lapses after a few seconds if none comes.
  virtual void expectOwnChange(const std::string& path) = 0;
};

/// For processes that watch nothing.
class NullFileEvents final : public FileEvents {
 public:
  void watch(std::vector<WatchedFolder>, Seconds, Callback) override {}
  void expectOwnChange(const std::string&) override {}
};

}  // namespace Nimbrel
