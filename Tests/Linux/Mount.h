#pragma once

#include <gtest/gtest.h>

#include <sys/mount.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

namespace Nimbrel::Testing {

/// A file system that stands over a folder for as long as this lives; for programs in namespaces of their own.
class Mount {
 public:
  /// An empty one of a kind that the kernel makes of nothing.
  static Mount ofKind(const char* kind, const std::string& folder, const char* options = nullptr) {
    EXPECT_EQ(::mount("nothing", folder.c_str(), kind, 0, options), 0) << std::strerror(errno);
    return Mount(folder);
  }
  /// The one that a folder lies on, once more: the same device, and yet nothing can be renamed across.
  static Mount again(const std::string& original, const std::string& folder) {
    EXPECT_EQ(::mount(original.c_str(), folder.c_str(), nullptr, MS_BIND, nullptr), 0) << std::strerror(errno);
    return Mount(folder);
  }
  /// The folder with what is in it, as one that cannot be written.
  static Mount readOnly(const std::string& folder) {
    auto mount = again(folder, folder);
    EXPECT_EQ(::mount(nullptr, folder.c_str(), nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY, nullptr), 0)
        << std::strerror(errno);
    return mount;
  }

  ~Mount() {
    if (!folder_.empty()) ::umount2(folder_.c_str(), MNT_DETACH);
  }
  Mount(Mount&& other) noexcept : folder_(std::exchange(other.folder_, {})) {}
  Mount& operator=(Mount&&) = delete;

 private:
  explicit Mount(std::string folder) : folder_(std::move(folder)) {}

  std::string folder_;
};

}  // namespace Nimbrel::Testing
