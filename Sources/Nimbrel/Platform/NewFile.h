#pragma once

#include "Foundation/Result.h"

#include <optional>
#include <string>
#include <string_view>

/// Files that we make. Any thread, no state. Errors are in words for people, and name no file.
namespace Nimbrel::NewFile {

/// Writes a file to a path where nothing stands, in a folder that is there; absent when it is on the disk, name and
/// all. It is written under a hidden name ".nimbrel-XXXXXX" beside its place and gets its own when it is whole: on
/// failure, and after a crash, there is no part of it under that name, and nothing is ever overwritten.
[[nodiscard]] std::optional<Error> write(const std::string& path, std::string_view bytes);

/// Takes back a file that write() has made. What cannot be removed stays.
void discard(const std::string& path);

}  // namespace Nimbrel::NewFile
