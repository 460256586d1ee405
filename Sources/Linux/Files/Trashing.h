#pragma once

#include "Foundation/Result.h"

#include <optional>
#include <string>

namespace Nimbrel {

/// Moves a file, or a link as such, to the Trash of its file system: to the one at `homeTrash` where that is on the
/// same, else to one at the top of the file's own. Never copies from one file system to another. Absent when the file
/// is in the Trash; otherwise it is where it was. Any thread.
[[nodiscard]] std::optional<Error> moveToTrash(const std::string& path, const std::optional<std::string>& homeTrash);

}  // namespace Nimbrel
