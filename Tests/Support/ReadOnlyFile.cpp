#include "Support/ReadOnlyFile.h"

#include <gtest/gtest.h>

#include <sys/fsuid.h>
#include <unistd.h>

#include <filesystem>
#include <utility>

namespace Nimbrel::Testing {

namespace {

namespace fs = std::filesystem;

constexpr uid_t nobody = 65534;

void allow(const fs::path& path, fs::perms more) { fs::permissions(path, more, fs::perm_options::add); }

/// The folder can be written by all, and those on the way to it are open; the group, which stays, counts before others.
void openTheWay(const fs::path& file) {
  constexpr auto enter = fs::perms::group_exec | fs::perms::others_exec;
  allow(file.parent_path(), fs::perms::group_all | fs::perms::others_all);
  for (auto folder = file.parent_path(); folder != folder.root_path(); folder = folder.parent_path()) {
    if ((fs::status(folder).permissions() & enter) != enter) allow(folder, enter);
  }
}

}  // namespace

ReadOnlyFile::ReadOnlyFile(std::string path) : path_(std::move(path)) {
  fs::permissions(path_, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  if (::geteuid() != 0) return;
  openTheWay(path_);
  ::setfsuid(nobody);
  // It tells of no failure otherwise.
  EXPECT_EQ(::setfsuid(static_cast<uid_t>(-1)), static_cast<int>(nobody)) << "no other user can be taken on";
}

ReadOnlyFile::~ReadOnlyFile() {
  ::setfsuid(::geteuid());
  fs::permissions(path_, fs::perms::owner_read | fs::perms::owner_write);
}

}  // namespace Nimbrel::Testing
