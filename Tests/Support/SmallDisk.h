#pragma once

#include <cstddef>
#include <functional>
#include <string>

/// Disks that are full or cannot be written. Each function runs `body` in a child process in which `folder` is such a
/// disk, and returns the child's exit status: what `body` returns, or 255 when the disk could not be made. The disk is
/// gone with the child. The body must report by its result alone: expectations in it are not seen.
namespace Nimbrel::Testing {

/// An empty disk of so many bytes.
[[nodiscard]] int onSmallDisk(const std::string& folder, std::size_t bytes, const std::function<int()>& body);

/// The folder with what is in it, read-only for everybody.
[[nodiscard]] int onReadOnlyDisk(const std::string& folder, const std::function<int()>& body);

}  // namespace Nimbrel::Testing
