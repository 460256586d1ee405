#include "Linux/Files/Trashing.h"

#include "Mount.h"
#include "Support/TemporaryFolder.h"
#include "TrashProgram.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using ::testing::HasSubstr;
using Testing::Mount;
using ::testing::Not;
using Testing::TemporaryFolder;

class TrashOfAnotherDisk : public ::testing::Test {
 protected:
  [[nodiscard]] std::string recycle(std::string_view name) const {
    const auto failure = moveToTrash(folder_.path(name), folder_.path("data/Trash"));
    return failure ? failure->message : "";
  }
  [[nodiscard]] bool isThere(std::string_view name) const { return fs::exists(fs::symlink_status(folder_.path(name))); }
  void setMode(std::string_view name, mode_t mode) const { ASSERT_EQ(::chmod(folder_.path(name).c_str(), mode), 0); }

  TemporaryFolder folder_;
  std::string disk_ = folder_.makeFolder("disk");
  std::string user_ = std::to_string(::getuid());
  std::string own_ = "disk/.Trash-" + user_;
};

TEST_F(TrashOfAnotherDisk, AFileStaysOnItsDiskAndIsFoundAndRestoredThereByOtherPrograms) {
  const auto disk = Mount::ofKind("tmpfs", disk_);
  for (const auto* name : {"folder/a 100%.png", "folder/ü\n.png"}) {
    const auto file = "disk/" + std::string(name);
    folder_.write(file, "content");
    EXPECT_EQ(recycle(file), "");
    EXPECT_FALSE(isThere(file));
    EXPECT_THAT(Testing::trashListed(folder_.path("data")), HasSubstr(folder_.path(file) + "\n"));
    Testing::restoreFromTrash(folder_.path("data"), folder_.path(file));
    EXPECT_EQ(contentOf(folder_.path(file)), "content");
  }
  EXPECT_FALSE(isThere("data/Trash"));
}

TEST_F(TrashOfAnotherDisk, ThePathIsRelativeToTheDiskAndTheTrashForTheUserAlone) {
  const auto disk = Mount::ofKind("tmpfs", disk_);
  folder_.write("disk/folder/a b.png", "content");
  EXPECT_EQ(recycle("disk/folder/a b.png"), "");
  EXPECT_THAT(contentOf(folder_.path(own_ + "/info/a b.png.trashinfo")), HasSubstr("\nPath=folder/a%20b.png\n"));
  EXPECT_EQ(contentOf(folder_.path(own_ + "/files/a b.png")), "content");
  EXPECT_EQ(fs::status(folder_.path(own_)).permissions(), fs::perms::owner_all);
}

TEST_F(TrashOfAnotherDisk, TheAdministratorsFolderIsUsedWhenItIsSticky) {
  const auto disk = Mount::ofKind("tmpfs", disk_);
  folder_.makeFolder("disk/.Trash");
  setMode("disk/.Trash", 01777);
  folder_.write("disk/a.png", "content");
  EXPECT_EQ(recycle("disk/a.png"), "");
  EXPECT_TRUE(isThere("disk/.Trash/" + user_ + "/files/a.png"));
  EXPECT_FALSE(isThere(own_));
  EXPECT_THAT(Testing::trashListed(folder_.path("data")), HasSubstr(folder_.path("disk/a.png")));
}

TEST_F(TrashOfAnotherDisk, TheAdministratorsFolderIsNotTrustedWithoutTheStickyBit) {
  const auto disk = Mount::ofKind("tmpfs", disk_);
  folder_.makeFolder("disk/.Trash");
  setMode("disk/.Trash", 0777);
  folder_.write("disk/a.png", "content");
  EXPECT_EQ(recycle("disk/a.png"), "");
  EXPECT_TRUE(isThere(own_ + "/files/a.png"));
}

TEST_F(TrashOfAnotherDisk, ALinkIsNoTrash) {
  const auto disk = Mount::ofKind("tmpfs", disk_);
  folder_.makeFolder("disk/elsewhere");
  setMode("disk/elsewhere", 01777);
  fs::create_directory_symlink("elsewhere", folder_.path("disk/.Trash"));
  fs::create_directory_symlink("elsewhere", folder_.path(own_));
  folder_.write("disk/a.png", "content");
  EXPECT_EQ(recycle("disk/a.png"), "There is no Trash on this disk: A file stands where a folder is needed");
  EXPECT_TRUE(isThere("disk/a.png"));
  EXPECT_TRUE(fs::is_empty(folder_.path("disk/elsewhere")));
}

TEST_F(TrashOfAnotherDisk, AReadOnlyDiskKeepsItsFile) {
  folder_.write("disk/a.png", "content");
  const auto disk = Mount::readOnly(disk_);
  EXPECT_EQ(recycle("disk/a.png"), "There is no Trash on this disk: The disk is read-only");
  EXPECT_TRUE(isThere("disk/a.png"));
  EXPECT_FALSE(isThere("data/Trash/info/a.png.trashinfo"));
}

TEST_F(TrashOfAnotherDisk, WhatIsMountedTwiceHasATrashInBothPlaces) {
  const auto again = Mount::again(folder_.makeFolder("aside"), disk_);
  folder_.write("disk/a.png", "content");
  EXPECT_EQ(recycle("disk/a.png"), "");
  EXPECT_TRUE(isThere(own_ + "/files/a.png"));
  EXPECT_FALSE(isThere("data/Trash/info/a.png.trashinfo"));
}

TEST_F(TrashOfAnotherDisk, AFullDiskKeepsItsFile) {
  const auto disk = Mount::ofKind("tmpfs", disk_, "size=16k,nr_inodes=10");
  folder_.write("disk/a.png", "content");
  const auto makeTrash = moveToTrash(folder_.write("disk/b.png", ""), folder_.path("disk/data/Trash"));
  ASSERT_FALSE(makeTrash) << makeTrash->message;
  std::ofstream(folder_.path("disk/filler")) << std::string(1 << 16, 'x');
  const auto failure = moveToTrash(folder_.path("disk/a.png"), folder_.path("disk/data/Trash"));
  EXPECT_EQ(failure, Error{"The Trash cannot be used: No space left on the disk"});
  EXPECT_TRUE(isThere("disk/a.png"));
  EXPECT_FALSE(isThere("disk/data/Trash/info/a.png.trashinfo"));
}

TEST_F(TrashOfAnotherDisk, TheTrashOfTheHomeServesItsOwnDisk) {
  const auto disk = Mount::ofKind("tmpfs", disk_);
  folder_.write("disk/folder/a.png", "content");
  EXPECT_EQ(moveToTrash(folder_.path("disk/folder/a.png"), folder_.path("disk/data/Trash")), std::nullopt);
  EXPECT_THAT(contentOf(folder_.path("disk/data/Trash/info/a.png.trashinfo")),
              HasSubstr("\nPath=" + folder_.path("disk/folder/a.png") + "\n"));
  EXPECT_FALSE(isThere(own_));
}

}  // namespace
}  // namespace Nimbrel
