#include "Platform/FileSystem.h"

#include "Support/TemporaryFolder.h"
#include "Unprivileged.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <climits>
#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace Nimbrel {

namespace {

namespace fs = std::filesystem;
using FileSystem::EntryKind;
using ::testing::Contains;
using ::testing::IsEmpty;
using Testing::TemporaryFolder;
using ::testing::UnorderedElementsAre;
using Testing::Unprivileged;

class FileSystemTest : public ::testing::Test {
 protected:
  void TearDown() override {
    // Qt removes neither a name that is not valid UTF-8 nor a path that is too long.
    std::error_code error;
    fs::remove_all(folder_.path(), error);
  }

  void link(std::string_view target, std::string_view name) const {
    fs::create_symlink(fs::path(target), folder_.path(name));
  }

  void makeUnreadable(std::string_view name) const { ASSERT_EQ(::chmod(folder_.path(name).c_str(), 0), 0); }

  void setModified(const std::string& path, std::chrono::seconds since1970) const {
    const timespec time{since1970.count(), 250'000'000};
    const timespec times[2] = {time, time};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  }

  [[nodiscard]] std::set<std::string> filesBelow(std::string_view name = {}) const {
    std::set<std::string> files;
    FileSystem::forEachFileBelow(folder_.path(name), [&](const std::string& path) {
      EXPECT_TRUE(files.insert(fs::path(path).lexically_relative(folder_.path())).second) << path;
    });
    return files;
  }

  /// Folders in each other, and a file in each, however long their paths get.
  void makeDeepTree(const std::string& folderName, int levels) const {
    int folder = ::open(folder_.path().c_str(), O_RDONLY | O_DIRECTORY);
    for (int level = 0; level < levels; ++level) {
      ASSERT_EQ(::mkdirat(folder, folderName.c_str(), 0700), 0);
      const int below = ::openat(folder, folderName.c_str(), O_RDONLY | O_DIRECTORY);
      ::close(folder);
      folder = below;
      ::close(::openat(folder, "file", O_CREAT | O_WRONLY, 0600));
    }
    ::close(folder);
  }

  TemporaryFolder folder_;
};

std::map<std::string, EntryKind> entriesOf(const std::string& folder) {
  std::map<std::string, EntryKind> entries;
  FileSystem::forEachEntry(folder, [&](std::string_view name, EntryKind kind) { entries.emplace(name, kind); });
  return entries;
}

}  // namespace

TEST_F(FileSystemTest, FilesFoldersAndWhatLinksLeadToExist) {
  folder_.write("sub/file", "content");
  link("sub/file", "link");
  EXPECT_TRUE(FileSystem::exists(folder_.path("sub")));
  EXPECT_TRUE(FileSystem::exists(folder_.path("sub/file")));
  EXPECT_TRUE(FileSystem::exists(folder_.path("link")));
}

TEST_F(FileSystemTest, WhatIsCertainlyAbsentDoesNotExist) {
  folder_.write("file", "content");
  link("nowhere", "broken");
  link("loop", "loop");
  EXPECT_FALSE(FileSystem::exists(folder_.path("missing")));
  EXPECT_FALSE(FileSystem::exists(folder_.path("file/below a file")));
  EXPECT_FALSE(FileSystem::exists(folder_.path(std::string(256, 'n'))));
  EXPECT_FALSE(FileSystem::exists(folder_.path("broken")));
  EXPECT_FALSE(FileSystem::exists(folder_.path("loop")));
  EXPECT_FALSE(FileSystem::exists(folder_.path("file") + '\0' + "more"));
  EXPECT_FALSE(FileSystem::exists({}));
}

TEST_F(FileSystemTest, WhatCannotBeFoundOutExists) {
  folder_.write("closed/file", "content");
  makeUnreadable("closed");
  const Unprivileged unprivileged;
  EXPECT_TRUE(FileSystem::exists(folder_.path("closed/file")));
  EXPECT_TRUE(FileSystem::exists(folder_.path("closed/other")));
  EXPECT_TRUE(FileSystem::isTaken(folder_.path("closed/other")));
}

TEST_F(FileSystemTest, TheModificationDateIsThatOfWhatALinkLeadsTo) {
  const auto path = folder_.write("file", "content");
  Testing::setModificationTime(path, 1'700'000'000.5);
  link("file", "link");
  link("nowhere", "broken");
  EXPECT_EQ(FileSystem::modificationDate(path), timestamp(1'700'000'000.5));
  EXPECT_EQ(FileSystem::modificationDate(folder_.path("link")), timestamp(1'700'000'000.5));
  EXPECT_EQ(FileSystem::modificationDate(folder_.path("broken")), std::nullopt);
  EXPECT_EQ(FileSystem::modificationDate(folder_.path("file") + '\0' + "more"), std::nullopt);
}

TEST_F(FileSystemTest, ALinkIsOneWhereverItLeads) {
  folder_.write("file", "content");
  link("file", "link");
  link("nowhere", "broken");
  EXPECT_FALSE(FileSystem::isLink(folder_.path("file")));
  EXPECT_FALSE(FileSystem::isLink(folder_.path("missing")));
  EXPECT_TRUE(FileSystem::isLink(folder_.path("link")));
  EXPECT_TRUE(FileSystem::isLink(folder_.path("broken")));
}

TEST_F(FileSystemTest, FoldersAreAmongTheEntriesBelow) {
  folder_.write("top.png", "");
  folder_.write("sub.png/file", "");
  folder_.write(".hidden/file", "");
  link("nowhere", "sub.png/broken");
  std::map<std::string, EntryKind> entries;
  FileSystem::forEachEntryBelow(folder_.path(), [&](const std::string& path, EntryKind kind) {
    entries.emplace(fs::path(path).lexically_relative(folder_.path()), kind);
  });
  const std::map<std::string, EntryKind> expected{{"top.png", EntryKind::File},
                                                  {"sub.png", EntryKind::Folder},
                                                  {"sub.png/file", EntryKind::File},
                                                  {"sub.png/broken", EntryKind::Other}};
  EXPECT_EQ(entries, expected);
}

TEST_F(FileSystemTest, LinksThatLeadNowhereTakeTheirName) {
  link("nowhere", "broken");
  link("loop", "loop");
  EXPECT_TRUE(FileSystem::isTaken(folder_.path("broken")));
  EXPECT_TRUE(FileSystem::isTaken(folder_.path("loop")));
  EXPECT_TRUE(FileSystem::isTaken(folder_.path()));
  EXPECT_FALSE(FileSystem::isTaken(folder_.path("missing")));
}

TEST_F(FileSystemTest, CreationIsTheModificationWhenThatIsEarlierThanTheBirth) {
  const auto file = folder_.write("file", "content");
  setModified(file, std::chrono::seconds(1'000'000));
  EXPECT_EQ(FileSystem::creationDate(file), timestamp(1'000'000.25));
}

TEST_F(FileSystemTest, CreationIsTheBirthWhenTheModificationIsLater) {
  using std::chrono::system_clock;
  const auto before = system_clock::now() - std::chrono::seconds(1);
  const auto file = folder_.write("file", "content");
  const auto after = system_clock::now();
  setModified(file, std::chrono::seconds(system_clock::to_time_t(after) + 1'000'000));
  const auto date = FileSystem::creationDate(file);
  ASSERT_TRUE(date.has_value());
  EXPECT_GE(*date, Timestamp(before));
  EXPECT_LE(*date, Timestamp(after));
}

TEST_F(FileSystemTest, CreationAndSizeAreThoseOfTheFileBehindALink) {
  setModified(folder_.write("file", "content"), std::chrono::seconds(5));
  link("file", "link");
  EXPECT_EQ(FileSystem::creationDate(folder_.path("link")), timestamp(5.25));
  EXPECT_EQ(FileSystem::size(folder_.path("link")), 7);
}

TEST_F(FileSystemTest, CreationAndSizeOfWhatCannotBeReadAreAbsent) {
  link("nowhere", "broken");
  EXPECT_EQ(FileSystem::creationDate(folder_.path("missing")), std::nullopt);
  EXPECT_EQ(FileSystem::creationDate(folder_.path("broken")), std::nullopt);
  EXPECT_EQ(FileSystem::size(folder_.path("missing")), std::nullopt);
  EXPECT_EQ(FileSystem::size(folder_.path("broken")), std::nullopt);
}

TEST_F(FileSystemTest, ALargeFileHasItsSize) {
  const auto file = folder_.write("file", {});
  fs::resize_file(file, 5'000'000'000);
  EXPECT_EQ(FileSystem::size(file), 5'000'000'000);
}

TEST_F(FileSystemTest, EntriesHaveTheirKinds) {
  folder_.write("file", "content");
  folder_.makeFolder("sub");
  ASSERT_EQ(::mkfifo(folder_.path("pipe").c_str(), 0600), 0);
  link("file", "link to a file");
  link("sub", "link to a folder");
  link("nowhere", "broken");
  link("loop", "loop");
  const std::map<std::string, EntryKind> expected{{"file", EntryKind::File},
                                                  {"sub", EntryKind::Folder},
                                                  {"pipe", EntryKind::Other},
                                                  {"link to a file", EntryKind::File},
                                                  {"link to a folder", EntryKind::Other},
                                                  {"broken", EntryKind::Other},
                                                  {"loop", EntryKind::Other}};
  EXPECT_EQ(entriesOf(folder_.path()), expected);
}

TEST_F(FileSystemTest, EntriesLeaveOutWhatIsHidden) {
  folder_.write(".file", "content");
  folder_.write("shown", "content");
  folder_.makeFolder(".folder");
  EXPECT_THAT(entriesOf(folder_.path()), UnorderedElementsAre(std::pair("shown", EntryKind::File)));
}

TEST_F(FileSystemTest, AFolderThatCannotBeReadIsEmpty) {
  folder_.write("closed/file", "content");
  makeUnreadable("closed");
  const Unprivileged unprivileged;
  EXPECT_THAT(entriesOf(folder_.path("closed")), IsEmpty());
  EXPECT_THAT(filesBelow("closed"), IsEmpty());
}

TEST_F(FileSystemTest, WhatIsNoFolderIsEmpty) {
  folder_.write("file", "content");
  for (const std::string& path : {folder_.path("missing"), folder_.path("file"), std::string()}) {
    EXPECT_THAT(entriesOf(path), IsEmpty()) << path;
    FileSystem::forEachFileBelow(path, [](const std::string& found) { ADD_FAILURE() << found; });
  }
}

TEST_F(FileSystemTest, NamesComeAsTheirBytesAre) {
  const std::string name = "line\nfeed \xff\xfe and \xc3\xa9";
  folder_.write(name, "content");
  EXPECT_THAT(entriesOf(folder_.path()), UnorderedElementsAre(std::pair(name, EntryKind::File)));
  EXPECT_THAT(filesBelow(), UnorderedElementsAre(name));
}

TEST_F(FileSystemTest, FilesBelowAreFoundAtEachDepth) {
  folder_.write("a", "content");
  folder_.write("one/b", "content");
  folder_.write("one/two/c", "content");
  folder_.write("other/d", "content");
  folder_.makeFolder("empty");
  EXPECT_THAT(filesBelow(), UnorderedElementsAre("a", "one/b", "one/two/c", "other/d"));
}

TEST_F(FileSystemTest, FilesBelowLeaveOutWhatIsHiddenAndWhatIsInHiddenFolders) {
  folder_.write(".file", "content");
  folder_.write(".folder/file", "content");
  folder_.write("sub/.file", "content");
  folder_.write("sub/shown", "content");
  EXPECT_THAT(filesBelow(), UnorderedElementsAre("sub/shown"));
}

TEST_F(FileSystemTest, FilesBelowAHiddenFolderAreFoundWhenItIsAskedFor) {
  folder_.write(".folder/file", "content");
  EXPECT_THAT(filesBelow(".folder"), UnorderedElementsAre(".folder/file"));
}

TEST_F(FileSystemTest, LinksToFilesAreFilesAndLinksToFoldersAreNotFollowed) {
  folder_.write("sub/file", "content");
  link("sub/file", "link to a file");
  link("sub", "link to a folder");
  link("..", "sub/back");
  link("loop", "loop");
  EXPECT_THAT(filesBelow(), UnorderedElementsAre("sub/file", "link to a file"));
}

TEST_F(FileSystemTest, ALinkToAFolderIsFollowedWhenItIsAskedFor) {
  folder_.write("sub/file", "content");
  link("sub", "link");
  EXPECT_THAT(filesBelow("link"), UnorderedElementsAre("link/file"));
}

TEST_F(FileSystemTest, UnreadableFoldersArePassedOver) {
  folder_.write("closed/file", "content");
  folder_.write("open/file", "content");
  makeUnreadable("closed");
  const Unprivileged unprivileged;
  EXPECT_THAT(filesBelow(), UnorderedElementsAre("open/file"));
}

TEST_F(FileSystemTest, SlashesAtTheEndOfAFolderDoNotShowInPaths) {
  const auto file = folder_.write("sub/file", "content");
  FileSystem::forEachFileBelow(folder_.path("sub//"), [&](const std::string& path) { EXPECT_EQ(path, file); });
  EXPECT_THAT(filesBelow("sub//"), UnorderedElementsAre("sub/file"));
}

TEST_F(FileSystemTest, ADeepTreeDoesNotUseUpOpenFiles) {
  makeDeepTree("d", 100);
  rlimit former{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &former), 0);
  const rlimit few{50, former.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
  const auto files = filesBelow();
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &former), 0);
  EXPECT_EQ(files.size(), 100U);
}

TEST_F(FileSystemTest, WhatLiesDeeperThanAPathCanTellIsPassedOver) {
  const std::string name(200, 'd');
  makeDeepTree(name, 30);
  const auto files = filesBelow();
  EXPECT_THAT(files, Contains(name + "/file"));
  EXPECT_EQ(files.size(), (PATH_MAX - 1 - folder_.path().size() - std::string("/file").size()) / (name.size() + 1));
}

}  // namespace Nimbrel
