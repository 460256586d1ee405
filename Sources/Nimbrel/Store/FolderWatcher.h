#pragma once

#include "Platform/FileEvents.h"

#include <functional>
#include <string>
#include <vector>

namespace Nimbrel {

/// Tells that something changed in the folders that screenshots come from. Main thread only.
class FolderWatcher {
 public:
  /// `events` is borrowed and must outlive the watcher.
  FolderWatcher(FileEvents& events, std::function<void()> onChange);
  /// Ends the watching.
  ~FolderWatcher();
  FolderWatcher(const FolderWatcher&) = delete;
  FolderWatcher& operator=(const FolderWatcher&) = delete;

  /// Watches these folders in place of all former ones: sources by themselves, the library with all below it.
  void watch(const std::vector<std::string>& sources, const std::vector<std::string>& libraries);

 private:
  FileEvents& events_;
  std::function<void()> onChange_;
};

}  // namespace Nimbrel
