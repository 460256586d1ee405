#include "Platform/FileMove.h"

#include "RefusedCalls.h"
#include "Support/TemporaryFolder.h"
#include "Unprivileged.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/syscall.h>

#include <cerrno>
#include <filesystem>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using Testing::TemporaryFolder;
using Testing::Unprivileged;

std::string messageOf(const std::optional<Error>& failure) { return failure ? failure->message : "moved"; }

class FileMoveTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::string move(const std::string& from, const std::string& to) const {
    return messageOf(FileMove::move(folder_.path(from), folder_.path(to)));
  }
  [[nodiscard]] bool isThere(std::string_view name) const { return fs::exists(fs::symlink_status(folder_.path(name))); }

  TemporaryFolder folder_;
};

TEST_F(FileMoveTest, MovesAFileWithItsTime) {
  Testing::setModificationTime(folder_.write("a", "content"), 1'700'000'000.5);
  const auto time = fs::last_write_time(folder_.path("a"));
  folder_.makeFolder("below");
  EXPECT_EQ(move("a", "below/b"), "moved");
  EXPECT_FALSE(isThere("a"));
  EXPECT_EQ(contentOf(folder_.path("below/b")), "content");
  EXPECT_EQ(fs::last_write_time(folder_.path("below/b")), time);
}

TEST_F(FileMoveTest, NothingIsOverwritten) {
  folder_.write("a", "one");
  folder_.write("b", "two");
  fs::create_symlink("nowhere", folder_.path("link"));
  EXPECT_EQ(move("a", "b"), "A file of that name is already there");
  EXPECT_EQ(move("a", "link"), "A file of that name is already there");
  EXPECT_EQ(contentOf(folder_.path("a")), "one");
  EXPECT_EQ(contentOf(folder_.path("b")), "two");
  EXPECT_TRUE(isThere("link"));
}

TEST_F(FileMoveTest, WhatIsMissingIsNamed) {
  EXPECT_EQ(move("a", "b"), "The file is not there");
  folder_.write("a", "content");
  EXPECT_EQ(move("a", "nowhere/b"), "The folder is not there");
  EXPECT_EQ(move("a", "a/b"), "A file stands where a folder is needed");
  EXPECT_TRUE(isThere("a"));
}

TEST_F(FileMoveTest, NamesThatCannotBeAreRefused) {
  folder_.write("a", "content");
  EXPECT_EQ(move("a", std::string(256, 'n')), "The name is too long");
  EXPECT_EQ(move("a", std::string("b\0c", 3)), "The name is not possible there");
  EXPECT_EQ(move(std::string("a\0c", 3), "b"), "The name is not possible there");
  EXPECT_TRUE(isThere("a"));
}

TEST_F(FileMoveTest, ALinkIsMovedAsALink) {
  folder_.write("a", "content");
  fs::create_symlink("a", folder_.path("link"));
  EXPECT_EQ(move("link", "moved"), "moved");
  EXPECT_EQ(fs::read_symlink(folder_.path("moved")), "a");
  EXPECT_TRUE(isThere("a"));
}

TEST_F(FileMoveTest, FoldersAndPipesAreNotMoved) {
  folder_.makeFolder("folder");
  ASSERT_EQ(::mkfifo(folder_.path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(move("folder", "b"), "It is not a file");
  EXPECT_EQ(move("pipe", "b"), "It is not a file");
  EXPECT_TRUE(isThere("folder"));
}

TEST_F(FileMoveTest, WithoutPermissionTheFileStays) {
  folder_.write("a", "content");
  folder_.write("locked/b", "content");
  ASSERT_EQ(::chmod(folder_.path("locked").c_str(), 0500), 0);
  const Unprivileged unprivileged;
  EXPECT_EQ(move("a", "locked/a"), "Permission denied");
  EXPECT_EQ(move("locked/b", "b"), "Permission denied");
  EXPECT_TRUE(isThere("a"));
  EXPECT_TRUE(isThere("locked/b"));
  EXPECT_FALSE(isThere("b"));
}

TEST_F(FileMoveTest, BytesThatAreNotUtf8AreKept) {
  folder_.write("a", "content");
  EXPECT_EQ(move("a", "b\xFF\xFE"), "moved");
  EXPECT_TRUE(isThere("b\xFF\xFE"));
}

/// What the system offers for renaming a file, the best first, and refusals of what is better than the last.
class FileMoveWithout : public FileMoveTest, public ::testing::WithParamInterface<std::vector<Testing::RefusedCall>> {
 protected:
  [[nodiscard]] std::string refusedMove(const std::string& from, const std::string& to) const {
    const auto outcome = Testing::withRefusedCalls(GetParam(), [&] {
      const auto message = move(from, to);
      return message == "moved" ? 0 : message == "A file of that name is already there" ? 1 : 2;
    });
    return outcome == 0 ? "moved" : outcome == 1 ? "exists" : "other";
  }
};

TEST_P(FileMoveWithout, MovesAFile) {
  folder_.write("a", "content");
  EXPECT_EQ(refusedMove("a", "b"), "moved");
  EXPECT_FALSE(isThere("a"));
  EXPECT_EQ(contentOf(folder_.path("b")), "content");
}

TEST_P(FileMoveWithout, NothingIsOverwritten) {
  folder_.write("a", "one");
  folder_.write("b", "two");
  EXPECT_EQ(refusedMove("a", "b"), "exists");
  EXPECT_EQ(contentOf(folder_.path("a")), "one");
  EXPECT_EQ(contentOf(folder_.path("b")), "two");
}

TEST_P(FileMoveWithout, AFileThatCannotLeaveItsFolderStaysAlone) {
  folder_.write("locked/a", "content");
  ASSERT_EQ(::chmod(folder_.path("locked").c_str(), 0500), 0);
  const Unprivileged unprivileged;
  EXPECT_EQ(refusedMove("locked/a", "b"), "other");
  EXPECT_TRUE(isThere("locked/a"));
  EXPECT_FALSE(isThere("b"));
}

INSTANTIATE_TEST_SUITE_P(TheExclusiveRename, FileMoveWithout,
                         ::testing::Values(std::vector<Testing::RefusedCall>{{SYS_renameat2, EINVAL}}));
INSTANTIATE_TEST_SUITE_P(SecondNames, FileMoveWithout,
                         ::testing::Values(std::vector<Testing::RefusedCall>{
                             {SYS_renameat2, ENOSYS}, {SYS_link, EPERM}, {SYS_linkat, EPERM}}));

TEST_F(FileMoveTest, FoldersAreMadeWithThoseOnTheWay) {
  EXPECT_EQ(FileMove::createFolders(folder_.path("a/b/c")), std::nullopt);
  EXPECT_TRUE(fs::is_directory(folder_.path("a/b/c")));
  EXPECT_EQ(FileMove::createFolders(folder_.path("a/b/c")), std::nullopt);
}

TEST_F(FileMoveTest, AFolderWithAPathThatIsTooLongIsNotMadeNorAnyOfThoseOnTheWay) {
  std::string path = "a";
  for (int i = 0; i < 1'000'000; ++i) path += "/a";
  EXPECT_EQ(FileMove::createFolders(folder_.path(path)), Error{"The name is too long"});
  EXPECT_FALSE(isThere("a"));
}

TEST_F(FileMoveTest, AFolderBehindALinkIsThere) {
  folder_.makeFolder("a");
  fs::create_directory_symlink("a", folder_.path("link"));
  EXPECT_EQ(FileMove::createFolders(folder_.path("link/b")), std::nullopt);
  EXPECT_TRUE(isThere("a/b"));
}

TEST_F(FileMoveTest, WhatStandsInTheWayOfAFolderIsNamed) {
  folder_.write("file", "content");
  fs::create_symlink("nowhere", folder_.path("link"));
  for (const auto* path : {"file", "file/a/b", "link"}) {
    EXPECT_EQ(messageOf(FileMove::createFolders(folder_.path(path))), "A file stands where a folder is needed") << path;
  }
}

TEST_F(FileMoveTest, AFolderThatMustNotBeMadeIsToldSo) {
  folder_.makeFolder("locked");
  ASSERT_EQ(::chmod(folder_.path("locked").c_str(), 0500), 0);
  const Unprivileged unprivileged;
  EXPECT_EQ(messageOf(FileMove::createFolders(folder_.path("locked/a/b"))), "Permission denied");
}

}  // namespace
}  // namespace Nimbrel
