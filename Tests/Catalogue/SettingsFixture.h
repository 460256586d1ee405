#pragma once

#include "Catalogue/Settings.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <vector>

namespace Nimbrel::Testing {

[[nodiscard]] inline QString text(const char* utf8) { return QString::fromUtf8(utf8); }

/// A suite of settings of a user with nothing set, and the processes that load it.
class SettingsFixture : public ::testing::Test {
 protected:
  /// The settings of a process that starts now.
  [[nodiscard]] std::unique_ptr<Settings> load() {
    suites_.push_back(std::make_unique<Defaults>(folders_.preferences, "suite"));
    return std::make_unique<Settings>(*suites_.back(), folders_, tool_);
  }
  void store(const char* key, const QJsonValue& value) {
    Defaults(folders_.preferences, "suite").set(QString::fromUtf8(key), value);
  }
  [[nodiscard]] QJsonValue stored(const char* key) const {
    return Defaults(folders_.preferences, "suite").value(QString::fromUtf8(key));
  }
  /// Two settings that see one suite as two processes do: through files of different names.
  [[nodiscard]] std::unique_ptr<Settings> loadInOtherProcess() {
    if (!std::filesystem::exists(folder_.path("Other"))) {
      std::filesystem::create_directories(folders_.preferences);
      std::filesystem::create_directory_symlink(folders_.preferences, folder_.path("Other"));
    }
    suites_.push_back(std::make_unique<Defaults>(folder_.path("Other"), "suite"));
    return std::make_unique<Settings>(*suites_.back(), folders_, tool_);
  }

  TemporaryFolder folder_;
  UserFolders folders_{
      .home = folder_.path("home"), .applicationSupport = folder_.path("data"), .preferences = folder_.path("config")};
  NullScreenshotTool tool_;
  std::vector<std::unique_ptr<Defaults>> suites_;
};

}  // namespace Nimbrel::Testing
