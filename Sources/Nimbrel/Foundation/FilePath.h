#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Pieces of a path. Paths are bytes here, as the file system has them: names that are not valid UTF-8 stay intact,
/// and no call looks at the disk. Views returned borrow from the argument.
namespace Nimbrel::FilePath {

/// What stands behind the last slash; slashes at the end are passed over. Empty for "/" and for an empty path.
[[nodiscard]] std::string_view lastComponent(std::string_view path);

/// The folder that holds the last component, without a slash at its end ("/" for the root's own children).
[[nodiscard]] std::string_view folder(std::string_view path);

/// The extension without its dot; empty when the name has none, begins with its only dot, or ends with a dot.
[[nodiscard]] std::string_view extension(std::string_view path);

/// The last component without its extension and the dot before it.
[[nodiscard]] std::string_view baseName(std::string_view path);

/// The name inside the folder, with exactly one slash between them.
[[nodiscard]] std::string join(std::string_view folder, std::string_view name);

/// How many bytes a name can have on nearly all file systems.
inline constexpr std::size_t longestName = 255;

/// The name with a blank and the number before its extension: "name 2.png". Where that exceeds so many bytes, the base
/// name loses characters at its end.
[[nodiscard]] std::string numberedName(std::string_view name, int number, std::size_t longest = longestName);

/// The path with "~" or "~/…" at its start replaced by the home folder; other paths as they are.
[[nodiscard]] std::string expandingTilde(std::string_view path, std::string_view home);

/// The path without slashes at its end, the root excepted.
[[nodiscard]] std::string withoutTrailingSlashes(std::string_view path);

}  // namespace Nimbrel::FilePath
