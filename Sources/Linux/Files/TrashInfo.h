#pragma once

#include <ctime>
#include <string>
#include <string_view>

namespace Nimbrel {

/// What the Trash keeps of a file, in the form of the Trash standard of freedesktop.org, version 1.0: where it was and
/// when it was deleted, in local time. A pure function but for the time zone.
[[nodiscard]] std::string trashInfo(std::string_view originalPath, std::time_t deletion);

}  // namespace Nimbrel
