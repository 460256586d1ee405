#pragma once

#include <QTemporaryDir>

#include <string>
#include <string_view>

namespace Nimbrel::Testing {

/// A folder of a test's own, removed with all that is in it, also what was made unreadable.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::string path(std::string_view name) const;

  /// Makes a folder below this one, with those on the way; returns its path.
  std::string makeFolder(std::string_view name) const;

  /// Writes a file below this folder, with the folders on the way; returns its path.
  std::string write(std::string_view name, std::string_view content) const;

 private:
  QTemporaryDir folder_;
  std::string path_;
};

/// Sets when a file was last changed, in seconds since 1970; fails the test when that does not work.
void setModificationTime(const std::string& path, double seconds);

/// The bytes of a file; fails the test when it cannot be read.
[[nodiscard]] std::string contentOf(const std::string& path);

}  // namespace Nimbrel::Testing
