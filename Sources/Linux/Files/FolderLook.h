#pragma once

#include "Platform/FileEvents.h"

#include <atomic>
#include <cstdint>

namespace Nimbrel {

/// What a look at a folder without events has found.
struct FolderLook {
  /// Whether a folder stands there, as far as can be told.
  bool stands = false;
  /// Whether its file system leaves out what other machines change.
  bool sendsNoEvents = false;
  /// Sums up the names of all visible entries, and the times at which the folders were last changed.
  std::uint64_t signature = 0;
};

/// Lists the folder, with those below it if it is watched in depth. Any thread; ends early, with a look that means
/// nothing, once `cancelled` is set.
[[nodiscard]] FolderLook lookAt(const WatchedFolder& folder, bool (*sendsNoEvents)(const std::string& path),
                                const std::atomic<bool>& cancelled);

}  // namespace Nimbrel
