#include "Support/FakeTrash.h"
#include "Support/Pictures.h"
#include "Support/SmallDisk.h"
#include "Support/StoreHome.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include "Foundation/Formats.h"
#include "Platform/ImageFile.h"

#include <gmock/gmock.h>
#include <QSignalSpy>

#include <sqlite3.h>

#include <filesystem>
#include <fstream>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using ::testing::ElementsAre;
using Testing::FakeTrash;
using ::testing::IsEmpty;
using Testing::namesOf;
using Testing::shotNamed;
using Testing::StoreHome;

constexpr int width = 160;
constexpr int height = 120;

class Shrinking : public ::testing::Test {
 protected:
  Shrinking() {
    Services services;
    auto trash = std::make_unique<FakeTrash>();
    trash_ = trash.get();
    services.trash = std::move(trash);
    store_ = home_.open(ProcessRole::tool, std::move(services));
  }

  /// A picture that PNG is bad at.
  ShotPtr addShrinkable(const std::string& name, int seed = 0) {
    return add(name, Testing::grainyPicture(width, height, seed));
  }
  /// One that PNG is better at than any other.
  ShotPtr addPlain(const std::string& name) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    return add(name, image);
  }
  ShotPtr add(const std::string& name, const QImage& image) {
    Testing::writePicture(image, home_.desktop(name));
    store_->importFiles({home_.desktop(name)});
    return shotNamed(*store_, name);
  }

  [[nodiscard]] Shot row(ShotID id) const { return store_->database().shot(id).value(); }

  StoreHome home_;
  FakeTrash* trash_ = nullptr;
  std::unique_ptr<Store> store_;
};

TEST_F(Shrinking, TheRowFollowsToTheNewFileAndTheOldOneGoesToTheTrash) {
  const auto shot = addShrinkable("Screenshot 1.png");
  store_->recompress({shot});
  const auto shrunk = row(shot->id);
  EXPECT_EQ(shrunk.path, home_.desktop("Screenshot 1.heic"));
  EXPECT_EQ(shrunk.name, "Screenshot 1.heic");
  EXPECT_EQ(shrunk.bytes, static_cast<std::int64_t>(fs::file_size(shrunk.path)));
  EXPECT_LT(shrunk.bytes, shot->bytes);
  EXPECT_EQ(ImageFile::pixelSize(shrunk.path), (ImageFile::PixelSize{.width = width, .height = height}));
  EXPECT_THAT(trash_->asked, ElementsAre(ElementsAre(shot->path)));
}

TEST_F(Shrinking, TheOldFileIsThereUntilItIsInTheTrash) {
  const auto shot = addShrinkable("Screenshot 1.png");
  store_->recompress({shot});
  EXPECT_TRUE(fs::exists(shot->path));
  EXPECT_EQ(store_->status(), "Imported 1") << "nothing is told before the Trash has answered";
}

TEST_F(Shrinking, TellsHowManyAndHowMuchOnceTheTrashHasAnswered) {
  const auto one = addShrinkable("Screenshot 1.png", 1);
  const auto other = addShrinkable("Screenshot 2.png", 2);
  store_->recompress({one, other});
  const auto saved = one->bytes + other->bytes - row(one->id).bytes - row(other->id).bytes;
  trash_->succeed();
  EXPECT_EQ(store_->status(), "Shrank 2 · saved " + Formats::byteCount(saved));
  EXPECT_EQ(shotNamed(*store_, "Screenshot 2.heic")->id, other->id) << "the list follows";
}

TEST_F(Shrinking, ATrashThatFailsChangesNothingInWhatIsTold) {
  const auto shot = addShrinkable("Screenshot 1.png");
  store_->recompress({shot});
  trash_->failAfter(0, "The disk is read-only");
  EXPECT_THAT(store_->status(), ::testing::StartsWith("Shrank 1 · saved "));
  EXPECT_EQ(row(shot->id).path, home_.desktop("Screenshot 1.heic"));
}

TEST_F(Shrinking, AShotThatWouldGrowStaysAndIsNotCounted) {
  const auto plain = addPlain("Screenshot 1.png");
  const auto grainy = addShrinkable("Screenshot 2.png");
  store_->recompress({plain, grainy});
  EXPECT_EQ(row(plain->id).path, plain->path);
  EXPECT_FALSE(fs::exists(home_.desktop("Screenshot 1.heic")));
  EXPECT_THAT(trash_->asked, ElementsAre(ElementsAre(grainy->path)));
  trash_->succeed();
  EXPECT_THAT(store_->status(), ::testing::StartsWith("Shrank 1 · "));
}

TEST_F(Shrinking, AFileOfTheSameStemIsNotReplaced) {
  const auto shot = addShrinkable("Screenshot 1.png");
  home_.folder().write("Desktop/Screenshot 1.heic", "somebody's");
  store_->recompress({shot});
  EXPECT_EQ(row(shot->id).path, home_.desktop("Screenshot 1 2.heic"));
  EXPECT_EQ(contentOf(home_.desktop("Screenshot 1.heic")), "somebody's");
}

TEST_F(Shrinking, HeicFilesAloneLeaveNothingToShrink) {
  const auto shot = addShrinkable("Screenshot 1.png");
  store_->recompress({shot});
  trash_->succeed();
  store_->recompress(store_->shots());
  EXPECT_EQ(store_->status(), "Nothing to shrink");
  EXPECT_EQ(trash_->asked.size(), 1U);
}

TEST_F(Shrinking, AnExtensionInCapitalsIsHeicAsWell) {
  home_.folder().write("Desktop/Screenshot 1.HEIC", std::string(1000, 'x'));
  store_->importFiles({home_.desktop("Screenshot 1.HEIC")});
  store_->recompress(store_->shots());
  EXPECT_EQ(store_->status(), "Nothing to shrink");
}

TEST_F(Shrinking, TheSizeOfTheRecordCountsAndNotThatOfTheFile) {
  const auto shot = addShrinkable("Screenshot 1.png");
  store_->database().setBytes(shot->id, 100);
  store_->reload();
  store_->recompress(store_->shots());
  EXPECT_EQ(store_->status(), "Nothing to shrink");
  EXPECT_EQ(row(shot->id).path, shot->path);
}

TEST_F(Shrinking, TextHashTagsAndDateStay) {
  const auto shot = addShrinkable("Screenshot 1.png");
  store_->database().setOCR(shot->id, "boarding pass", {});
  store_->database().setHash(shot->id, 77);
  store_->database().setTags(shot->id, {"trip"});
  store_->reload();
  store_->recompress(store_->shots());
  trash_->succeed();
  const auto shrunk = row(shot->id);
  EXPECT_EQ(shrunk.ocr, "boarding pass");
  EXPECT_EQ(shrunk.phash, 77);
  EXPECT_THAT(shrunk.tags, ElementsAre("trip"));
  EXPECT_EQ(shrunk.date, shot->date);
  EXPECT_EQ(store_->matching("boarding").size(), 1U);
}

TEST_F(Shrinking, WhatCannotBeReadOrIsGoneIsPassedOver) {
  home_.folder().write("Desktop/Screenshot 1.png", std::string(1000, 'x'));
  store_->importFiles({home_.desktop("Screenshot 1.png")});
  const auto gone = addShrinkable("Screenshot 2.png");
  fs::remove(gone->path);
  store_->recompress(store_->shots());
  EXPECT_EQ(store_->status(), "Nothing to shrink");
  EXPECT_THAT(trash_->asked, IsEmpty());
}

TEST_F(Shrinking, ATruncatedPictureKeepsItsFile) {
  const auto shot = addShrinkable("Screenshot 1.png");
  fs::resize_file(shot->path, static_cast<std::uintmax_t>(shot->bytes / 2));
  store_->recompress({shot});
  EXPECT_EQ(row(shot->id).path, shot->path);
  EXPECT_THAT(trash_->asked, IsEmpty());
}

TEST_F(Shrinking, AShotThatIsNamedTwiceIsShrunkOnce) {
  const auto shot = addShrinkable("Screenshot 1.png");
  store_->recompress({shot, shot});
  EXPECT_THAT(trash_->asked, ElementsAre(ElementsAre(shot->path)));
  EXPECT_FALSE(fs::exists(home_.desktop("Screenshot 1 2.heic")));
}

TEST_F(Shrinking, AShotThatHasMovedMeanwhileIsLeftAlone) {
  const auto shot = addShrinkable("Screenshot 1.png");
  store_->database().setPath(shot->id, home_.desktop("elsewhere.png"), Database::Filed::No);
  store_->recompress({shot});
  EXPECT_EQ(row(shot->id).path, home_.desktop("elsewhere.png"));
  EXPECT_FALSE(fs::exists(home_.desktop("Screenshot 1.heic")));
}

TEST_F(Shrinking, AFolderThatCannotBeWrittenKeepsTheOldFile) {
  const auto shot = addShrinkable("Screenshot 1.png");
  const int status = Testing::onReadOnlyDisk(home_.desktop(""), [&] {
    store_->recompress({shot});
    return row(shot->id).path == shot->path && trash_->asked.empty() ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
}

TEST_F(Shrinking, AFullDiskKeepsTheOldFile) {
  const auto shot = addShrinkable("Screenshot 1.png");
  const auto content = contentOf(shot->path);
  const int status = Testing::onSmallDisk(home_.folder().path("Desktop"), 64 * 1024, [&] {
    home_.folder().write("Desktop/Screenshot 1.png", content);
    // What is left is too little for any picture.
    std::ofstream(home_.desktop("filling")) << std::string(1 << 20, 'x');
    store_->recompress({shot});
    const bool isUntouched = row(shot->id).path == shot->path && fs::exists(shot->path);
    return isUntouched && trash_->asked.empty() && store_->status() == "Nothing to shrink" ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
}

TEST_F(Shrinking, ACatalogueThatRefusesTheNewFileLosesIt) {
  const auto shot = addShrinkable("Screenshot 1.png");
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(home_.path(".local/share/Nimbrel/nimbrel.sqlite").c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  store_->recompress({shot});
  sqlite3_close(other);
  EXPECT_EQ(row(shot->id).path, shot->path);
  EXPECT_FALSE(fs::exists(home_.desktop("Screenshot 1.heic")));
  EXPECT_THAT(trash_->asked, IsEmpty());
}

TEST_F(Shrinking, ManyShotsKeepTheirOrder) {
  ShotList shots;
  std::vector<std::string> paths;
  for (int i = 0; i < 7; ++i) {
    shots.push_back(addShrinkable("Screenshot " + std::to_string(i) + ".png", i));
    paths.push_back(shots.back()->path);
  }
  store_->recompress(shots);
  EXPECT_THAT(trash_->asked, ElementsAre(paths));
}

TEST_F(Shrinking, TheOldPathIsToldForWhoeverKeepsItsPicture) {
  const auto shot = addShrinkable("Screenshot 1.png");
  const auto plain = addPlain("Screenshot 2.png");
  std::vector<std::string> replaced;
  QObject::connect(store_.get(), &Store::fileReplaced, store_.get(),
                   [&](const std::string& path) { replaced.push_back(path); });
  store_->recompress({shot, plain});
  EXPECT_THAT(replaced, ElementsAre(shot->path));
}

class ShrinkingInBackground : public Shrinking {
 protected:
  ShotList addMany(int count) {
    ShotList shots;
    for (int i = 0; i < count; ++i) shots.push_back(addShrinkable("Screenshot " + std::to_string(i) + ".png", i));
    return shots;
  }
  [[nodiscard]] bool hasEnded() const { return !store_->shrinkProgress(); }
};

TEST_F(ShrinkingInBackground, ComesBackBeforeAnythingIsReplacedAndEndsAsTheOtherDoes) {
  const auto shots = addMany(5);
  store_->recompressInBackground(shots);
  EXPECT_EQ(store_->shrinkProgress(), (ShrinkProgress{.done = 0, .total = 5}));
  EXPECT_FALSE(fs::exists(home_.desktop("Screenshot 0.heic")));
  ASSERT_TRUE(Testing::waitUntil([this] { return hasEnded(); }));
  std::vector<std::string> paths;
  std::int64_t saved = 0;
  for (const auto& shot : shots) {
    paths.push_back(shot->path);
    saved += shot->bytes - row(shot->id).bytes;
  }
  EXPECT_THAT(trash_->asked, ElementsAre(paths)) << "in one call, in the order given";
  trash_->succeed();
  EXPECT_EQ(store_->status(), "Shrank 5 · saved " + Formats::byteCount(saved));
}

TEST_F(ShrinkingInBackground, TellsItsProgressShotByShot) {
  const auto shots = addMany(3);
  std::vector<std::size_t> done;
  QObject::connect(store_.get(), &Store::shrinkProgressChanged, store_.get(), [&] {
    if (store_->shrinkProgress()) done.push_back(store_->shrinkProgress()->done);
  });
  store_->recompressInBackground(shots);
  ASSERT_TRUE(Testing::waitUntil([this] { return hasEnded(); }));
  EXPECT_THAT(done, ElementsAre(0U, 1U, 2U));
}

TEST_F(ShrinkingInBackground, CancellingStopsBeforeTheNextShotAndKeepsWhatIsDone) {
  const auto shots = addMany(5);
  QObject::connect(store_.get(), &Store::shrinkProgressChanged, store_.get(), [&] {
    if (store_->shrinkProgress() && store_->shrinkProgress()->done == 2) store_->cancelRecompress();
  });
  store_->recompressInBackground(shots);
  ASSERT_TRUE(Testing::waitUntil([this] { return hasEnded(); }));
  EXPECT_THAT(trash_->asked, ElementsAre(ElementsAre(shots[0]->path, shots[1]->path)));
  trash_->succeed();
  EXPECT_THAT(store_->status(), ::testing::StartsWith("Shrank 2 · "));
  EXPECT_EQ(row(shots[2]->id).path, shots[2]->path);
  Testing::runEventLoopFor(std::chrono::milliseconds(100));
  EXPECT_FALSE(fs::exists(home_.desktop("Screenshot 2.heic"))) << "what was being encoded comes to nothing";
}

TEST_F(ShrinkingInBackground, HeicFilesAloneEndAtOnce) {
  home_.folder().write("Desktop/Screenshot 1.HEIC", std::string(1000, 'x'));
  store_->importFiles({home_.desktop("Screenshot 1.HEIC")});
  store_->recompressInBackground(store_->shots());
  EXPECT_TRUE(hasEnded());
  EXPECT_EQ(store_->status(), "Nothing to shrink");
}

TEST_F(ShrinkingInBackground, WhatIsAskedForMeanwhileFollows) {
  const auto shots = addMany(2);
  store_->recompressInBackground({shots[0]});
  store_->recompressInBackground({shots[1]});
  ASSERT_TRUE(Testing::waitUntil([&] { return trash_->asked.size() == 2; }));
  EXPECT_THAT(trash_->asked, ElementsAre(ElementsAre(shots[0]->path), ElementsAre(shots[1]->path)));
  EXPECT_TRUE(hasEnded());
}

TEST_F(ShrinkingInBackground, AShotRemovedMeanwhileIsPassedOver) {
  const auto shots = addMany(4);
  QObject::connect(store_.get(), &Store::shrinkProgressChanged, store_.get(), [&] {
    if (store_->shrinkProgress() && store_->shrinkProgress()->done == 1) store_->forget({shots[2]});
  });
  store_->recompressInBackground(shots);
  ASSERT_TRUE(Testing::waitUntil([this] { return hasEnded(); }));
  EXPECT_THAT(trash_->asked, ElementsAre(ElementsAre(shots[0]->path, shots[1]->path, shots[3]->path)));
  EXPECT_TRUE(fs::exists(shots[2]->path));
}

TEST_F(ShrinkingInBackground, APictureSavedOverWhileItIsEncodedKeepsItsFile) {
  const auto shot = addShrinkable("Screenshot 1.png");
  QObject::connect(store_.get(), &Store::shrinkProgressChanged, store_.get(), [&] {
    if (!store_->shrinkProgress()) return;
    // The encoder has begun, or finds the new content whole: the file is replaced at once as editors do it.
    std::ofstream(home_.desktop("new")) << std::string(10, 'x');
    fs::rename(home_.desktop("new"), shot->path);
  });
  store_->recompressInBackground({shot});
  ASSERT_TRUE(Testing::waitUntil([this] { return hasEnded(); }));
  EXPECT_EQ(row(shot->id).path, shot->path);
  EXPECT_EQ(contentOf(shot->path), std::string(10, 'x'));
  EXPECT_THAT(trash_->asked, IsEmpty());
}

TEST_F(ShrinkingInBackground, WhatIsSavedOverAShrunkShotBeforeTheEndStaysAndIsFoundAgain) {
  const auto shots = addMany(2);
  QObject::connect(store_.get(), &Store::fileReplaced, store_.get(), [&](const std::string& path) {
    if (path == shots[0]->path) std::ofstream(path) << std::string(10, 'x');
  });
  store_->recompressInBackground(shots);
  ASSERT_TRUE(Testing::waitUntil([this] { return hasEnded(); }));
  EXPECT_THAT(trash_->asked, ElementsAre(ElementsAre(shots[1]->path)));
  EXPECT_EQ(contentOf(shots[0]->path), std::string(10, 'x'));
  EXPECT_FALSE(store_->database().ignoredPaths().contains(shots[0]->path));
}

TEST_F(ShrinkingInBackground, NoScanTakesAnOldFileForANewShotBeforeItIsInTheTrash) {
  const auto shot = addShrinkable("Screenshot 1.png");
  store_->recompressInBackground({shot});
  ASSERT_TRUE(Testing::waitUntil([this] { return hasEnded(); }));
  ASSERT_TRUE(fs::exists(shot->path));
  store_->scan();
  EXPECT_THAT(namesOf(store_->shots()), ElementsAre("Screenshot 1.heic"));
  trash_->succeed();
  EXPECT_THAT(store_->database().ignoredPaths(), IsEmpty());
}

TEST_F(ShrinkingInBackground, AStoreThatGoesMeanwhileLeavesWholeFiles) {
  const auto shots = addMany(3);
  store_->recompressInBackground(shots);
  store_.reset();
  for (const auto& shot : shots) EXPECT_TRUE(fs::exists(shot->path));
}

}  // namespace
}  // namespace Nimbrel
