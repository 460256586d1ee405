#pragma once

#include "Support/TemporaryFolder.h"

#include <QDateTime>
#include <QImage>
#include <QStringList>

#include <filesystem>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// Saturday, 31 January 2026, 10:35:42 in UTC.
inline constexpr qint64 sampleNow = 1769855742;

/// What a run of nimbrel-sample answered.
struct SampleRun {
  int status = -1;
  std::string output;
  std::string errors;
};

[[nodiscard]] SampleRun runSample(const QStringList& arguments, const std::string& workingFolder = "/");

/// A sample home as the program makes it, and what lies in it.
class SampleHome {
 public:
  /// Runs the program; fails the test when it does not succeed.
  void make(qint64 now = sampleNow) const;

  [[nodiscard]] std::string path() const { return folder_.path("home"); }
  [[nodiscard]] std::string path(std::string_view name) const { return folder_.path("home/" + std::string(name)); }
  [[nodiscard]] const TemporaryFolder& folder() const { return folder_; }

  /// Sorted by name.
  [[nodiscard]] std::vector<std::filesystem::path> waiting() const { return filesBelow("Desktop"); }
  [[nodiscard]] std::vector<std::filesystem::path> filed() const { return filesBelow("Pictures/Nimbrel"); }
  [[nodiscard]] std::vector<std::filesystem::path> pictures() const;

 private:
  [[nodiscard]] std::vector<std::filesystem::path> filesBelow(std::string_view name) const;

  TemporaryFolder folder_;
};

/// When the file was last changed, in UTC.
[[nodiscard]] QDateTime modified(const std::filesystem::path& file);

}  // namespace Nimbrel::Testing
