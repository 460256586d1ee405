#pragma once

#include "Platform/Trash.h"

#include <memory>
#include <optional>
#include <string>

namespace Nimbrel {

/// The Trash that the desktop shows, after the Trash standard of freedesktop.org, version 1.0. `homeTrash` is the path
/// of the one in the user's home, made when it is needed; files of other file systems go to one at the top of their
/// own. What cannot go to a Trash of its own file system fails. Ending it waits for the file at hand and leaves the
/// rest.
[[nodiscard]] std::unique_ptr<Trash> makeDesktopTrash(std::optional<std::string> homeTrash);

}  // namespace Nimbrel
