#pragma once

#include <string>

/// Waiting for the disk. Both return 0, or the error number.
namespace Nimbrel {

/// Waits until what was written to an open file or folder is on the disk. File systems that have nothing to flush, or
/// do not know how, are no error.
[[nodiscard]] int flush(int file);

/// Waits until the names in the folder are on the disk, where the file system can do that. An empty path is the folder
/// that relative names start from.
[[nodiscard]] int flushFolder(const std::string& path);

}  // namespace Nimbrel
