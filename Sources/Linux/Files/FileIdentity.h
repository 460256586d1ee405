#pragma once

#include <sys/stat.h>

#include <string>

namespace Nimbrel {

/// Which file something is, whatever names it has and gets.
class FileIdentity {
 public:
  /// Of an open file.
  explicit FileIdentity(int file) : isKnown_(::fstat(file, &facts_) == 0) {}

  /// Whether this very file stands at the path, and not a link to it.
  [[nodiscard]] bool isAt(const std::string& path) const {
    struct stat there {};
    return isKnown_ && ::lstat(path.c_str(), &there) == 0 && there.st_dev == facts_.st_dev &&
           there.st_ino == facts_.st_ino;
  }

 private:
  struct stat facts_ {};
  bool isKnown_;
};

}  // namespace Nimbrel
