#include "Support/FakeTrash.h"
#include "Support/Pictures.h"
#include "Support/SmallDisk.h"
#include "Support/StoreHome.h"
#include "Support/TemporaryFolder.h"

#include "Foundation/Formats.h"
#include "Platform/ImageFile.h"

#include <gmock/gmock.h>

#include <filesystem>

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

}  // namespace
}  // namespace Nimbrel
