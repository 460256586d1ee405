#pragma once

#include "Linux/Files/FileDescriptor.h"

#include <string>

namespace Nimbrel {

/// A new file with a hidden name ".nimbrel-XXXXXX", which goes again unless it is given another one.
class HiddenFile {
 public:
  explicit HiddenFile(const std::string& folder);
  ~HiddenFile();
  HiddenFile(const HiddenFile&) = delete;
  HiddenFile& operator=(const HiddenFile&) = delete;

  /// Why the file could not be made: an error number of the system, or 0.
  [[nodiscard]] int error() const { return error_; }
  [[nodiscard]] int number() const { return file_.number(); }
  [[nodiscard]] const std::string& path() const { return path_; }

  /// Gives the file its name, at which nothing may stand, and closes it; returns 0, or the error number.
  [[nodiscard]] int rename(const std::string& path);

  /// The same, in place of what stands there.
  [[nodiscard]] int replace(const std::string& path);

 private:
  std::string path_;
  FileDescriptor file_;
  int error_ = 0;
};

}  // namespace Nimbrel
