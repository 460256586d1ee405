#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

namespace Nimbrel {
namespace {

using ::testing::IsEmpty;
using Testing::shotNamed;
using Testing::StoreHome;

class ImportTest : public ::testing::Test {
 protected:
  StoreHome home_;
  std::unique_ptr<Store> store_ = home_.open(ProcessRole::mainApplication);
};

TEST_F(ImportTest, AnyImageWillDoAndStaysWhereItLies) {
  const auto path = home_.addFile(home_.path("elsewhere/holiday.JPG"));
  store_->importFiles({path});
  EXPECT_EQ(store_->status(), "Imported 1");
  EXPECT_EQ(shotNamed(*store_, "holiday.JPG")->path, path);
  EXPECT_FALSE(shotNamed(*store_, "holiday.JPG")->filed);
}

TEST_F(ImportTest, WithoutPathsReloadsAndSaysSo) {
  const auto other = home_.open(ProcessRole::tool);
  other->importFiles({home_.addFile(home_.path("a.png"))});
  store_->importFiles({});
  EXPECT_EQ(store_->status(), "Nothing new to import");
  EXPECT_EQ(store_->shots().size(), 1U);
}

TEST_F(ImportTest, AListWithDuplicatesCountsOnce) {
  const auto path = home_.addFile(home_.path("a.png"));
  store_->importFiles({path, path});
  EXPECT_EQ(store_->status(), "Imported 1");
}

TEST_F(ImportTest, OtherFilesAreSkipped) {
  store_->importFiles({home_.addFile(home_.path("a.txt")), home_.addFile(home_.path("b.mov"))});
  EXPECT_EQ(store_->status(), "Nothing new to import");
  EXPECT_THAT(store_->shots(), IsEmpty());
}

TEST_F(ImportTest, AFolderWithAnImagesNameIsSkipped) {
  store_->importFiles({home_.folder().makeFolder("folder.png")});
  EXPECT_THAT(store_->shots(), IsEmpty());
}

TEST_F(ImportTest, AnIndexedPathIsUnignoredButNotCounted) {
  const auto path = home_.addFile(home_.path("a.png"));
  store_->importFiles({path});
  store_->database().remove(store_->shots().front()->id, Database::IgnorePath::Yes);
  Shot again;
  again.path = path;
  store_->database().insert(again);
  store_->importFiles({path});
  EXPECT_EQ(store_->status(), "Nothing new to import");
  EXPECT_THAT(store_->database().ignoredPaths(), IsEmpty());
}

TEST_F(ImportTest, AFileInsideTheLibraryIsFiledAndOneBesideItIsNot) {
  store_->importFiles(
      {home_.addFile(home_.inLibrary("2026/in.png")), home_.addFile(home_.path("Pictures/Nimbrel and more/out.png"))});
  EXPECT_TRUE(shotNamed(*store_, "in.png")->filed);
  EXPECT_EQ(shotNamed(*store_, "in.png")->appName, "");
  EXPECT_FALSE(shotNamed(*store_, "out.png")->filed);
}

TEST_F(ImportTest, EachFactIsToldOnceHoweverManyFilesThereAre) {
  QSignalSpy shots(store_.get(), &Store::shotsChanged);
  QSignalSpy status(store_.get(), &Store::statusChanged);
  store_->importFiles({home_.addFile(home_.path("a.png")), home_.addFile(home_.path("b.png"))});
  EXPECT_EQ(shots.count(), 1);
  EXPECT_EQ(status.count(), 1);
}

}  // namespace
}  // namespace Nimbrel
