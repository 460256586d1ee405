#pragma once

#include "Linux/Files/FileDescriptor.h"
#include "Linux/Files/HiddenFile.h"

#include <sys/types.h>

#include <memory>
#include <string>

namespace Nimbrel {

/// A name that is taken from the start, by an empty file, and a hidden file beside it that gets this name when it is
/// whole. Both go when it does not come to that.
class ReservedFile {
 public:
  /// Nothing may stand at the path.
  explicit ReservedFile(const std::string& path);
  ~ReservedFile();
  ReservedFile(const ReservedFile&) = delete;
  ReservedFile& operator=(const ReservedFile&) = delete;

  /// Why the name could not be taken or the hidden file made: an error number of the system, or 0.
  [[nodiscard]] int error() const;

  /// Where the content is to be written, into the file that is there.
  [[nodiscard]] const std::string& contentPath() const { return content_->path(); }

  /// Gives the content its name when it is on the disk; returns 0, or the error number. A file that somebody has put at
  /// the name in the meantime stays.
  [[nodiscard]] int commit();

 private:
  [[nodiscard]] bool isOurs() const;

  std::string path_;
  int error_ = 0;
  FileDescriptor placeholder_;           ///< open until the content has its name
  std::unique_ptr<HiddenFile> content_;  ///< null when the name could not be taken
};

}  // namespace Nimbrel
