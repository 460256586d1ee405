#include "Platform/FileGroup.h"

#include "Platform/FileSystem.h"
#include "RefusedCalls.h"
#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"
#include "Unprivileged.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <cerrno>
#include <cmath>
#include <filesystem>
#include <limits>
#include <set>
#include <string>
#include <utility>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Testing::TemporaryFolder;
using Testing::Unprivileged;

std::set<std::string> namesIn(const std::string& folder) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename());
  return names;
}

class FileGroupTest : public ::testing::Test {
 protected:
  /// Begins a file and writes it; fails the test when that does not work.
  [[nodiscard]] PendingFile newFile(std::string_view name, std::string_view content) const {
    auto file = PendingFile::beside(folder_.path(name));
    EXPECT_TRUE(file) << file.error().message;
    EXPECT_EQ(file.value().write(content), std::nullopt);
    return std::move(file).value();
  }
  [[nodiscard]] std::string failureToBegin(std::string_view name) const {
    const auto file = PendingFile::beside(folder_.path(name));
    return file ? "begun" : file.error().message;
  }
  [[nodiscard]] std::string finish() {
    const auto failure = group_.finish();
    return failure ? failure->message : "";
  }
  [[nodiscard]] std::set<std::string> names() const { return namesIn(folder_.path()); }
  [[nodiscard]] unsigned permissions(std::string_view name) const {
    struct stat facts {};
    EXPECT_EQ(::stat(folder_.path(name).c_str(), &facts), 0);
    return facts.st_mode & 07777;
  }

  TemporaryFolder folder_;
  FileGroup group_;
};

TEST_F(FileGroupTest, FilesHaveTheirNamesOnlyOnceTheGroupIsFinished) {
  EXPECT_EQ(group_.add(newFile("a", "one")), std::nullopt);
  EXPECT_EQ(group_.add(newFile("b", "two")), std::nullopt);
  EXPECT_FALSE(fs::exists(folder_.path("a")));
  EXPECT_EQ(group_.placed(), 0U);
  EXPECT_EQ(finish(), "");
  EXPECT_THAT(names(), ElementsAre("a", "b"));
  EXPECT_EQ(contentOf(folder_.path("a")), "one");
  EXPECT_EQ(group_.placed(), 2U);
}

TEST_F(FileGroupTest, WaitingFilesAreHidden) {
  EXPECT_EQ(group_.add(newFile("a", "one")), std::nullopt);
  ASSERT_THAT(names(), SizeIs(1));
  EXPECT_THAT(*names().begin(), ::testing::MatchesRegex("\\.nimbrel-[0-9A-Za-z]{6}"));
}

TEST_F(FileGroupTest, WithoutFinishingNothingIsLeft) {
  {
    FileGroup group;
    EXPECT_EQ(group.add(newFile("a", "one")), std::nullopt);
    const auto alone = newFile("b", "two");
  }
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(FileGroupTest, AFullGroupIsFinishedByItself) {
  for (int i = 0; i < 64; ++i) EXPECT_EQ(group_.add(newFile("f" + std::to_string(i), "x")), std::nullopt);
  EXPECT_EQ(group_.placed(), 64U);
  EXPECT_EQ(group_.add(newFile("large", std::string(33 << 20, 'x'))), std::nullopt);
  EXPECT_EQ(group_.placed(), 65U);
}

TEST_F(FileGroupTest, AFileIsReplacedWithItsPermissionsKept) {
  folder_.write("a", "old");
  ASSERT_EQ(::chmod(folder_.path("a").c_str(), 0600), 0);
  EXPECT_EQ(group_.add(newFile("a", "new")), std::nullopt);
  EXPECT_EQ(contentOf(folder_.path("a")), "old");
  EXPECT_EQ(finish(), "");
  EXPECT_EQ(contentOf(folder_.path("a")), "new");
  EXPECT_EQ(permissions("a"), 0600U);
}

TEST_F(FileGroupTest, ANewFileHasThePermissionsOfNewFiles) {
  EXPECT_EQ(group_.add(newFile("a", "new")), std::nullopt);
  EXPECT_EQ(finish(), "");
  folder_.write("other", "");
  EXPECT_EQ(permissions("a"), permissions("other"));
}

TEST_F(FileGroupTest, ALinkIsReplacedAndNotFollowed) {
  folder_.write("elsewhere/a", "untouched");
  fs::create_symlink(folder_.path("elsewhere/a"), folder_.path("a"));
  EXPECT_EQ(group_.add(newFile("a", "new")), std::nullopt);
  EXPECT_EQ(finish(), "");
  EXPECT_FALSE(fs::is_symlink(folder_.path("a")));
  EXPECT_EQ(contentOf(folder_.path("elsewhere/a")), "untouched");
}

TEST_F(FileGroupTest, BearsTheDateThatItIsGiven) {
  for (const double date : {1'700'000'000.25, 0.0, -1.5, -0.0, 4'000'000'000.0}) {
    auto file = newFile("a", "x");
    file.setModificationDate(timestamp(date));
    EXPECT_EQ(group_.add(std::move(file)), std::nullopt);
    EXPECT_EQ(finish(), "");
    EXPECT_EQ(FileSystem::modificationDate(folder_.path("a")), timestamp(date));
  }
}

TEST_F(FileGroupTest, ADateThatNoClockReachesIsLeftOut) {
  constexpr double infinite = std::numeric_limits<double>::infinity();
  for (const double date : {1e300, -1e300, 1e19, infinite, -infinite, std::nan("")}) {
    auto file = newFile("a", "x");
    const auto before = fs::last_write_time(fs::directory_iterator(folder_.path())->path());
    file.setModificationDate(timestamp(date));
    EXPECT_EQ(fs::last_write_time(fs::directory_iterator(folder_.path())->path()), before) << date;
  }
}

TEST_F(FileGroupTest, AFileThatIsNoLongerWantedIsDropped) {
  EXPECT_EQ(group_.add(newFile("a", "one"), [] { return false; }), std::nullopt);
  EXPECT_EQ(group_.add(newFile("b", "two"), [&] { return !fs::exists(folder_.path("a")); }), std::nullopt);
  EXPECT_EQ(finish(), "");
  EXPECT_THAT(names(), ElementsAre("b"));
  EXPECT_EQ(group_.placed(), 1U);
}

TEST_F(FileGroupTest, WhatCannotTakeItsNameIsDroppedAndTheOthersAreNot) {
  EXPECT_EQ(group_.add(newFile("a", "one")), std::nullopt);
  EXPECT_EQ(group_.add(newFile("b", "two")), std::nullopt);
  folder_.makeFolder("a");
  EXPECT_EQ(finish(), "It is not a file");
  EXPECT_THAT(names(), ElementsAre("a", "b"));
  EXPECT_EQ(contentOf(folder_.path("b")), "two");
  EXPECT_EQ(group_.placed(), 1U);
}

TEST_F(FileGroupTest, SaysAtOnceWhereNoFileCanStand) {
  folder_.makeFolder("folder");
  folder_.write("file", "");
  EXPECT_EQ(failureToBegin("folder"), "It is not a file");
  EXPECT_EQ(failureToBegin("missing/a"), "The folder is not there");
  EXPECT_EQ(failureToBegin("file/a"), "A file stands where a folder is needed");
  EXPECT_EQ(failureToBegin(std::string(4000, 'x')), "The name is too long");
  EXPECT_EQ(failureToBegin(std::string_view("a\0b", 3)), "The name is not possible there");
  EXPECT_THAT(names(), ElementsAre("file", "folder"));
}

TEST_F(FileGroupTest, AFolderThatMustNotBeWrittenToIsAnError) {
  folder_.makeFolder("locked");
  ASSERT_EQ(::chmod(folder_.path("locked").c_str(), 0500), 0);
  const Unprivileged unprivileged;
  EXPECT_EQ(failureToBegin("locked/a"), "Permission denied");
}

TEST_F(FileGroupTest, AFullDiskLeavesNoTemporaryFile) {
  const auto disk = folder_.makeFolder("disk");
  const auto outcome = Testing::onSmallDisk(disk, 256 << 10, [&] {
    FileGroup group;
    auto small = PendingFile::beside(disk + "/small");
    if (!small || small.value().write("small") || group.add(std::move(small).value())) return 1;
    {
      auto large = PendingFile::beside(disk + "/large");
      if (!large) return 2;
      if (large.value().write(std::string(1 << 20, 'x')) != Error{"No space left on the disk"}) return 3;
    }
    if (group.finish()) return 4;
    return namesIn(disk) == std::set<std::string>{"small"} ? 0 : 5;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(FileGroupTest, WhatCannotBeFlushedIsDropped) {
  const auto outcome = Testing::withRefusedCalls({{SYS_fsync, EIO}}, [&] {
    FileGroup group;
    auto file = PendingFile::beside(folder_.path("a"));
    if (!file || file.value().write("x") || group.add(std::move(file).value())) return 1;
    if (group.finish() != Error{"The disk reported an error"}) return 2;
    return names().empty() && group.placed() == 0 ? 0 : 3;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(FileGroupTest, AFileSystemWithNothingToFlushIsNoError) {
  const auto outcome = Testing::withRefusedCalls({{SYS_fsync, EINVAL}, {SYS_sync_file_range, ESPIPE}}, [&] {
    FileGroup group;
    auto file = PendingFile::beside(folder_.path("a"));
    if (!file || file.value().write("x") || group.add(std::move(file).value())) return 1;
    return group.finish() || group.placed() != 1 ? 2 : 0;
  });
  EXPECT_EQ(outcome, 0);
}

}  // namespace
}  // namespace Nimbrel
