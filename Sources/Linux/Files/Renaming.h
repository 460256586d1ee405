#pragma once

#include <string>

/// Changes of names that never cost a file. All return 0, or the error number.
namespace Nimbrel {

/// 0 for a file, or a link as such; folders, devices and the like are not for us to move.
[[nodiscard]] int checkMovable(const std::string& path);

/// Gives a file another name on the same file system, also where the system cannot do so without overwriting: then the
/// name is taken first, by a second name of the file or, failing that, by an empty file.
[[nodiscard]] int renameWithoutReplacing(const std::string& from, const std::string& to);

}  // namespace Nimbrel
