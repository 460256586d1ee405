#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace Nimbrel::Testing {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() : path_(folder_.path().toStdString()) {
  EXPECT_TRUE(folder_.isValid()) << folder_.errorString().toStdString();
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code error;
  for (fs::recursive_directory_iterator entry(path_, fs::directory_options::skip_permission_denied, error), end;
       entry != end; entry.increment(error)) {
    if (entry->is_directory(error) && !entry->is_symlink(error)) {
      fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, error);
    }
  }
  // The library cannot remove names that are not UTF-8.
  fs::remove_all(path_, error);
}

std::string TemporaryFolder::path(std::string_view name) const { return (fs::path(path_) / name).string(); }

std::string TemporaryFolder::makeFolder(std::string_view name) const {
  const auto folder = path(name);
  fs::create_directories(folder);
  return folder;
}

std::string TemporaryFolder::write(std::string_view name, std::string_view content) const {
  const auto file = path(name);
  fs::create_directories(fs::path(file).parent_path());
  std::ofstream(file, std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
  return file;
}

void setModificationTime(const std::string& path, double seconds) {
  const auto whole = std::floor(seconds);
  const timespec moment{static_cast<time_t>(whole), static_cast<long>((seconds - whole) * 1e9)};
  const timespec times[2] = {moment, moment};
  EXPECT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0) << path;
}

std::string contentOf(const std::string& path) {
  const std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.good()) << path;
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

}  // namespace Nimbrel::Testing
