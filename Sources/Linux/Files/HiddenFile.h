#pragma once

#include "Linux/Files/FileDescriptor.h"

#include <cstddef>
#include <string>

namespace Nimbrel {

/// A new file with a hidden name in a folder, which goes again unless it is given another one.
class HiddenFile {
 public:
  /// For whom the file is, by the bits of a mode; those that the user lets no new file have are taken off.
  enum class Access : unsigned { owner = 0600, everybody = 0666 };

  HiddenFile(const std::string& folder, Access access);
  ~HiddenFile();
  HiddenFile(const HiddenFile&) = delete;
  HiddenFile& operator=(const HiddenFile&) = delete;

  /// The number of the error that kept it from being made, or 0.
  [[nodiscard]] int error() const { return error_; }
  [[nodiscard]] int number() const { return file_.number(); }
  [[nodiscard]] const std::string& path() const { return path_; }

  // All return 0, or the error number.

  [[nodiscard]] int write(const char* bytes, std::size_t count);
  /// Gives it its name, where nothing stands; it is no longer ours then.
  [[nodiscard]] int rename(const std::string& path);
  /// The same, in place of what stands there.
  [[nodiscard]] int replace(const std::string& path);

 private:
  std::string path_;
  FileDescriptor file_;
  int error_ = 0;
};

}  // namespace Nimbrel
