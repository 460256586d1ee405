#include "Store/CodesQueue.h"

#include "QueueFixture.h"

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::readingOf;
using ::testing::SizeIs;
using Wanted = PictureReader::Wanted;

using CodesQueueTest = Testing::QueueFixture<CodesQueue>;

TEST_F(CodesQueueTest, WritesCodesAndLeavesTextSecretsAndSearchAlone) {
  const auto id = add("a.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  EXPECT_THAT(reader_.requests, ElementsAre(Testing::FakePictureReader::Request{pathOf("a.png"), Wanted::Codes}));
  reader_.answer(readingOf({"never asked for"}, {"ann@example.com"}));
  ASSERT_TRUE(hasEnded());
  const auto shot = database_->shot(id).value();
  EXPECT_THAT(shot.barcodes, ElementsAre("ann@example.com"));
  EXPECT_EQ(shot.ocr, "");
  EXPECT_FALSE(shot.ocrDone);
  EXPECT_THAT(shot.sensitive, IsEmpty());
  EXPECT_FALSE(database_->needsCodes(id));
}

TEST_F(CodesQueueTest, TwoIdenticalCodesInOnePictureAreOneStoredLine) {
  const auto id = add("a.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  reader_.answer(readingOf({}, {"x", "y", "x"}));
  ASSERT_TRUE(hasEnded());
  EXPECT_THAT(database_->shot(id)->barcodes, ElementsAre("x", "y"));
}

TEST_F(CodesQueueTest, APictureWithOnlyCodesWithoutPayloadIsDoneAndHasNone) {
  const auto id = add("a.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  reader_.answer(readingOf({}, {"", ""}));
  ASSERT_TRUE(hasEnded());
  EXPECT_THAT(database_->shot(id)->barcodes, IsEmpty());
  EXPECT_FALSE(database_->needsCodes(id));
}

TEST_F(CodesQueueTest, AShotWhoseFileIsGoneHasNoCodes) {
  const auto id = addMissing("a.png");
  queue_.start();
  ASSERT_TRUE(hasEnded());
  EXPECT_THAT(reader_.requests, IsEmpty());
  EXPECT_FALSE(database_->needsCodes(id));
}

TEST_F(CodesQueueTest, ABatchHoldsTheNewestFourHundred) {
  for (int i = 0; i < 401; ++i) add(std::to_string(i) + ".png");
  reader_.answerByItself();
  queue_.start();
  ASSERT_TRUE(hasEnded());
  EXPECT_THAT(reader_.requests, SizeIs(400));
  EXPECT_EQ(reader_.paths().front(), pathOf("400.png"));
  ASSERT_THAT(database_->pendingCodes(10), SizeIs(1));
  EXPECT_EQ(database_->pendingCodes(10).front()->name, "0.png");
}

TEST_F(CodesQueueTest, AllOfThemCanBeAskedForAtOnce) {
  for (int i = 0; i < 401; ++i) add(std::to_string(i) + ".png");
  reader_.answerByItself();
  queue_.startAll();
  ASSERT_TRUE(hasEnded());
  EXPECT_THAT(database_->pendingCodes(10), IsEmpty());
}

TEST_F(CodesQueueTest, StartingWhileABatchRunsChangesNothing) {
  add("a.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  queue_.start();
  queue_.startAll();
  reader_.answer(PictureReading{});
  ASSERT_TRUE(hasEnded());
  EXPECT_THAT(reader_.requests, SizeIs(1));
}

TEST_F(CodesQueueTest, AShotThatTextRecognitionHasLookedAtMeanwhileIsPassedOver) {
  const auto id = add("a.png");
  queue_.start();
  database_->setCodes(id, {"found by reading"});
  ASSERT_TRUE(hasEnded());
  EXPECT_THAT(reader_.requests, IsEmpty());
  EXPECT_THAT(database_->shot(id)->barcodes, ElementsAre("found by reading"));
}

TEST_F(CodesQueueTest, AReaderThatIsMissingEndsTheBatchAndLeavesEverythingPending) {
  add("a.png");
  add("b.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  reader_.answer(std::nullopt);
  ASSERT_TRUE(hasEnded());
  EXPECT_THAT(database_->pendingCodes(10), SizeIs(2));
}

TEST_F(CodesQueueTest, AShotRemovedWhileItIsLookedAtIsNotBroughtBack) {
  const auto id = add("a.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  database_->remove(id, Database::IgnorePath::No);
  reader_.answer(readingOf({}, {"x"}));
  ASSERT_TRUE(hasEnded());
  EXPECT_FALSE(database_->shot(id));
}

TEST_F(CodesQueueTest, AShotWhosePathChangesWhileItIsLookedAtIsLookedAtAtItsNewPlace) {
  const auto id = add("a.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  std::filesystem::rename(pathOf("a.png"), pathOf("moved.png"));
  database_->setPath(id, pathOf("moved.png"), Database::Filed::Yes);
  reader_.answer(PictureReading{});
  ASSERT_TRUE(wasAsked(2));
  EXPECT_EQ(reader_.paths().back(), pathOf("moved.png"));
  reader_.answer(readingOf({}, {"x"}));
  ASSERT_TRUE(hasEnded());
  EXPECT_THAT(database_->shot(id)->barcodes, ElementsAre("x"));
}

TEST_F(CodesQueueTest, EndingInTheMiddleOfABatchLeavesTheRestPending) {
  add("a.png");
  add("b.png");
  {
    CodesQueue queue(*database_, reader_);
    queue.start();
    ASSERT_TRUE(wasAsked(1));
    reader_.answer(PictureReading{});
    ASSERT_TRUE(wasAsked(2));
  }
  reader_.answer(PictureReading{});
  EXPECT_THAT(database_->pendingCodes(10), SizeIs(1));
}

}  // namespace
}  // namespace Nimbrel
