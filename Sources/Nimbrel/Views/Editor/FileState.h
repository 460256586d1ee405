#pragma once

#include "Foundation/Timestamp.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Nimbrel {

/// What tells that a file is another by now than the one that was looked at before. Any thread.
struct FileState {
  std::optional<Timestamp> modified;  ///< absent when it cannot be read
  std::optional<std::int64_t> bytes;

  bool operator==(const FileState&) const = default;

  /// The state of the file at that path, links followed.
  [[nodiscard]] static FileState of(const std::string& path);
};

}  // namespace Nimbrel
