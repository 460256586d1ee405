#include "FilingFixture.h"
#include "Support/SmallDisk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::shotNamed;

class FilingTrouble : public Testing::FilingFixture {};

TEST_F(FilingTrouble, OfAListWithOneShotTwiceTheSecondFails) {
  addShot("Screenshot 1.png");
  const auto store = openScanned();
  store->file({store->shots().front(), store->shots().front()});
  EXPECT_EQ(store->status(), "Filed 1 shot into the library");
  EXPECT_TRUE(fs::exists(store->shots().front()->path));
}

TEST_F(FilingTrouble, LeavesAShotInTheInboxWhenItsFileIsGone) {
  const auto path = addShot("Screenshot 1.png");
  const auto store = openScanned();
  fs::remove(path);
  store->file(store->shots());
  EXPECT_EQ(store->status(), "Could not file Screenshot 1.png: The file is not there");
  EXPECT_FALSE(store->shots().front()->filed);
  EXPECT_EQ(store->shots().front()->path, path);
}

TEST_F(FilingTrouble, ASensitiveShotIsNotNamedInAFailure) {
  const auto path = addShot("Screenshot 1.png");
  const auto store = openScanned();
  store->database().setOCR(store->shots().front()->id, "", {"Password"});
  store->reload();
  fs::remove(path);
  store->file(store->shots());
  EXPECT_EQ(store->status(), "Could not file sensitive screenshot: The file is not there");
  store->settings().protectSensitive.set(false);
  store->file(store->shots());
  EXPECT_EQ(store->status(), "Could not file Screenshot 1.png: The file is not there");
}

TEST_F(FilingTrouble, ASuccessOverwritesAFailureInTheStatus) {
  const auto path = addShot("Screenshot 1.png");
  addShot("Screenshot 2.png");
  const auto store = openScanned();
  fs::remove(path);
  store->file({shotNamed(*store, "Screenshot 2.png"), shotNamed(*store, "Screenshot 1.png")});
  EXPECT_EQ(store->status(), "Filed 1 shot into the library");
}

TEST_F(FilingTrouble, LeavesAShotInTheInboxWhenAFileStandsInTheWayOfItsFolder) {
  const auto path = addShot("Screenshot 1.png");
  home_.addFile(home_.inLibrary("2026"));
  const auto store = openScanned();
  store->file(store->shots());
  EXPECT_EQ(store->status(), "Could not file Screenshot 1.png: A file stands where a folder is needed");
  EXPECT_TRUE(fs::exists(path));
  EXPECT_FALSE(store->shots().front()->filed);
}

TEST_F(FilingTrouble, LeavesAShotInTheInboxWhenTheLibraryIsReadOnly) {
  const auto path = addShot("Screenshot 1.png");
  fs::create_directories(home_.inLibrary(""));
  const auto outcome = Testing::onReadOnlyDisk(home_.inLibrary(""), [&] {
    const auto store = openScanned();
    store->file(store->shots());
    if (store->status() != "Could not file Screenshot 1.png: The disk is read-only") return 1;
    return store->shots().front()->path == path && fs::exists(path) ? 0 : 2;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(FilingTrouble, MovesToALibraryOnAnotherDisk) {
  const auto path = addShot("Screenshot 1.png");
  const auto disk = home_.folder().makeFolder("disk");
  const auto outcome = Testing::onSmallDisk(disk, 1 << 20, [&] {
    const auto store = openScanned();
    store->settings().libraryRoot.set(disk + "/Library");
    store->file(store->shots());
    const auto target = disk + "/Library/2026/2026-03/Screenshot 1.png";
    if (store->shots().front()->path != target || !store->shots().front()->filed) return 1;
    if (fs::exists(path) || Testing::contentOf(target) != "no picture") return 2;
    store->scan();
    return store->shots().size() == 1 ? 0 : 3;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(FilingTrouble, ADiskThatFillsUpCostsNoFile) {
  constexpr int count = 12;
  constexpr std::size_t bytes = 100 << 10;
  for (int i = 0; i < count; ++i) {
    std::ofstream(home_.desktop("Screenshot " + std::to_string(i) + ".png")) << std::string(bytes, 'x');
  }
  const auto disk = home_.folder().makeFolder("disk");
  const auto outcome = Testing::onSmallDisk(disk, 512 << 10, [&] {
    const auto store = openScanned();
    store->settings().libraryRoot.set(disk + "/Library");
    store->fileAll();
    if (store->inboxCount() == 0 || store->inboxCount() == count) return 1;
    for (const auto& shot : store->shots()) {
      if (!fs::exists(shot->path) || fs::file_size(shot->path) != bytes) return 2;
    }
    store->fileAll();
    if (store->status().find(": No space left on the disk") == std::string::npos) return 3;
    store->scan();
    return store->shots().size() == count ? 0 : 4;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(FilingTrouble, AShotThatAnotherProcessHasFiledStaysWhereThatHasPutIt) {
  addShot("Screenshot 1.png");
  const auto store = openScanned();
  const auto other = home_.open(ProcessRole::tool);
  other->fileAll();
  const auto stranger = home_.addFile(home_.desktop("Screenshot 1.png"));
  store->fileAll();
  EXPECT_EQ(store->status(), "Could not file Screenshot 1.png: It has been moved meanwhile");
  EXPECT_TRUE(fs::exists(stranger)) << "another file, which the row does not stand for";
  store->reload();
  EXPECT_EQ(store->shots().front()->path, home_.inLibrary("2026/2026-03/Screenshot 1.png"));
}

TEST_F(FilingTrouble, TheRowOfAVanishedFileDoesNotGetTheFileThatTakesItsPath) {
  addShot("Screenshot 1.png");
  const auto vanished = home_.addFile(home_.inLibrary("2026/2026-03/Screenshot 1.png"));
  const auto store = openScanned();
  const auto inbox = *std::ranges::find_if(store->shots(), [](const ShotPtr& shot) { return !shot->filed; });
  fs::remove(vanished);
  store->file({inbox});
  ASSERT_EQ(store->shots().size(), 1U);
  EXPECT_EQ(store->shots().front()->id, inbox->id);
  EXPECT_EQ(store->shots().front()->path, vanished);
}

TEST_F(FilingTrouble, ALinkToAFileIsMovedAsALink) {
  const auto target = home_.addFile(home_.path("elsewhere/picture.png"));
  fs::create_symlink(target, home_.desktop("Screenshot 1.png"));
  const auto store = openScanned();
  store->fileAll();
  ASSERT_EQ(store->shots().size(), 1U);
  EXPECT_TRUE(fs::is_symlink(store->shots().front()->path));
  EXPECT_TRUE(fs::exists(target));
}

}  // namespace
}  // namespace Nimbrel
