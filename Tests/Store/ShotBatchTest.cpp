#include "Store/ShotBatch.h"

#include "QueueFixture.h"

namespace Nimbrel {
namespace {

class ShotBatchTest : public Testing::UnreadShots {
 protected:
  ShotBatch batch_{*database_};
};

TEST_F(ShotBatchTest, IsEmptyUntilItIsFilledAndWhenItsLastShotHadItsTurn) {
  EXPECT_TRUE(batch_.isEmpty());
  const auto old = add("old.png");
  const auto young = add("new.png");
  batch_.fill(database_->pendingOCR(ShotBatch::unlimited));
  EXPECT_EQ(batch_.remaining(), 2U);
  EXPECT_EQ(batch_.currentID(), young);
  batch_.passOn();
  EXPECT_EQ(batch_.currentID(), old);
  EXPECT_FALSE(batch_.isEmpty());
  batch_.passOn();
  EXPECT_TRUE(batch_.isEmpty());
}

TEST_F(ShotBatchTest, BeginsAnewWhenItIsFilledAgain) {
  const auto id = add("a.png");
  batch_.fill(database_->pendingOCR(1));
  batch_.passOn();
  batch_.fill(database_->pendingOCR(1));
  EXPECT_EQ(batch_.remaining(), 1U);
  EXPECT_EQ(batch_.currentID(), id);
  batch_.clear();
  EXPECT_TRUE(batch_.isEmpty());
}

TEST_F(ShotBatchTest, ReadsTheRowAsItIsByNow) {
  const auto id = add("a.png");
  batch_.fill(database_->pendingOCR(1));
  database_->setOCR(id, "text", {});
  EXPECT_EQ(batch_.row()->ocr, "text");
  database_->remove(id, Database::IgnorePath::No);
  EXPECT_FALSE(batch_.row());
}

TEST_F(ShotBatchTest, AShotThatWasFiledHasMoved) {
  const auto id = add("a.png");
  batch_.fill(database_->pendingOCR(1));
  EXPECT_FALSE(batch_.hasMovedFrom(pathOf("a.png")));
  database_->setPath(id, pathOf("filed.png"), Database::Filed::Yes);
  EXPECT_TRUE(batch_.hasMovedFrom(pathOf("a.png")));
}

TEST_F(ShotBatchTest, AShotWhoseIdWentToAnotherFileHasMovedAndOneThatIsGoneHasNot) {
  const auto id = add("a.png");
  batch_.fill(database_->pendingOCR(1));
  database_->remove(id, Database::IgnorePath::No);
  EXPECT_FALSE(batch_.hasMovedFrom(pathOf("a.png")));
  ASSERT_EQ(add("b.png"), id);
  EXPECT_TRUE(batch_.hasMovedFrom(pathOf("a.png")));
}

}  // namespace
}  // namespace Nimbrel
