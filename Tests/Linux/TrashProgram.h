#pragma once

#include <string>

/// Another program for the Trash, as users have it beside ours.
namespace Nimbrel::Testing {

/// What it lists of the Trash in this folder for data, and of all those of other file systems.
[[nodiscard]] std::string trashListed(const std::string& dataHome);

/// Has it put back the first file it finds whose path begins like that.
void restoreFromTrash(const std::string& dataHome, const std::string& path);

}  // namespace Nimbrel::Testing
