#pragma once

#include "Store/ProcessRole.h"

#include <string>

namespace Nimbrel {

/// Where a build looks for updates, filled in when it is released. A plain value.
struct UpdateSettings {
  std::string feedURL;    ///< "SUFeedURL"; empty when missing
  std::string publicKey;  ///< "SUPublicEDKey", what downloads are signed with; empty when missing

  bool operator==(const UpdateSettings&) const = default;

  /// Reads the file of keys that lies beside the program. What is missing, no text or no JSON is as good as empty.
  [[nodiscard]] static UpdateSettings read(const std::string& path);

  /// Whether this is a released build that asks for updates, and the process the one that does.
  [[nodiscard]] bool isConfigured(ProcessRole role) const;
};

}  // namespace Nimbrel
