#pragma once

#include "Foundation/Result.h"

#include <optional>
#include <string>

/// Moves of the user's files. Any thread, no state. Errors are in words for people, and name no file.
namespace Nimbrel::FileMove {

/// Makes the folder with those on the way; absent when it is there.
[[nodiscard]] std::optional<Error> createFolders(const std::string& path);

/// Moves a file, or a link as such, to a path in a folder that is there; absent when it has moved. Nothing that stands
/// at the target is ever overwritten, and on failure the source is as it was.
///
/// To another file system the file is copied with its times, permissions and extended attributes, those excepted that
/// cannot be kept there. At any moment, also after a crash, it is whole at one of the two paths at least: the copy is
/// written under a hidden name ".nimbrel-XXXXXX" beside the target, gets its name when it is on the disk, and only then
/// the source goes.
[[nodiscard]] std::optional<Error> move(const std::string& from, const std::string& to);

}  // namespace Nimbrel::FileMove
