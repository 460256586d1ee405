#include "Store/ReadingQueue.h"

#include "QueueFixture.h"
#include "Support/LogRecorder.h"

#include <sqlite3.h>

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::readingOf;
using ::testing::SizeIs;
using Wanted = PictureReader::Wanted;

class ReadingQueueTest : public Testing::QueueFixture<ReadingQueue> {
 protected:
  [[nodiscard]] bool ended(BatchEnd end) { return hasEnded() && finished_.front().front().value<BatchEnd>() == end; }
};

TEST_F(ReadingQueueTest, WritesTextCodesAndKindsOfSecretsAndFindsTheTextInSearch) {
  const auto id = add("a.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  EXPECT_THAT(reader_.requests,
              ElementsAre(Testing::FakePictureReader::Request{pathOf("a.png"), Wanted::TextAndCodes}));
  reader_.answer(readingOf({"Invoice", "password: abcdef"}, {"code one", "code two"}));
  ASSERT_TRUE(ended(BatchEnd::Done));
  const auto shot = database_->shot(id).value();
  EXPECT_EQ(shot.ocr, "Invoice\npassword: abcdef");
  EXPECT_TRUE(shot.ocrDone);
  EXPECT_THAT(shot.sensitive, ElementsAre("Password"));
  EXPECT_THAT(shot.barcodes, ElementsAre("code one", "code two"));
  EXPECT_FALSE(database_->needsCodes(id));
  EXPECT_THAT(database_->searchIDs("invoice").value(), ElementsAre(id));
}

TEST_F(ReadingQueueTest, AnImageWithoutTextIsDoneAndNotOfferedAgain) {
  const auto id = add("a.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  reader_.answer(PictureReading{});
  ASSERT_TRUE(ended(BatchEnd::Done));
  const auto shot = database_->shot(id).value();
  EXPECT_EQ(shot.ocr, "");
  EXPECT_TRUE(shot.ocrDone);
  EXPECT_THAT(shot.sensitive, IsEmpty());
  EXPECT_THAT(database_->pendingOCR(1), IsEmpty());
  queue_.start();
  EXPECT_FALSE(queue_.isRunning());
}

TEST_F(ReadingQueueTest, AnEmailAddressInACodeMakesTheShotSensitiveAndStaysOutOfTheText) {
  const auto id = add("a.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  reader_.answer(readingOf({"Scan me"}, {"mailto:ann@example.com"}));
  ASSERT_TRUE(hasEnded());
  EXPECT_EQ(database_->shot(id)->ocr, "Scan me");
  EXPECT_THAT(database_->shot(id)->sensitive, ElementsAre("Email"));
}

TEST_F(ReadingQueueTest, ASecretDoesNotReachFromTheTextIntoACode) {
  const auto id = add("a.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  reader_.answer(readingOf({"ann@example"}, {".com"}));
  ASSERT_TRUE(hasEnded());
  EXPECT_THAT(database_->shot(id)->sensitive, IsEmpty());
}

TEST_F(ReadingQueueTest, TwoIdenticalCodesAreOneStoredLine) {
  const auto id = add("a.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  reader_.answer(readingOf({}, {"https://example.com", "https://example.com"}));
  ASSERT_TRUE(hasEnded());
  EXPECT_THAT(database_->shot(id)->barcodes, ElementsAre("https://example.com"));
}

TEST_F(ReadingQueueTest, AShotWhoseFileIsGoneIsDoneWithoutTextAndItsCodesStayAsTheyAre) {
  const auto lost = addMissing("lost.png");
  const auto known = addMissing("known.png");
  database_->setCodes(known, {"a code"});
  queue_.start();
  ASSERT_TRUE(ended(BatchEnd::Done));
  EXPECT_THAT(reader_.requests, IsEmpty());
  EXPECT_TRUE(database_->shot(lost)->ocrDone);
  EXPECT_TRUE(database_->needsCodes(lost));
  EXPECT_THAT(database_->shot(known)->barcodes, ElementsAre("a code"));
}

TEST_F(ReadingQueueTest, ReadsTheNewestFirstAndOneAtATime) {
  add("old.png");
  add("new.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_THAT(reader_.paths(), ElementsAre(pathOf("new.png")));
  reader_.answer(PictureReading{});
  ASSERT_TRUE(wasAsked(2));
  EXPECT_THAT(reader_.paths(), ElementsAre(pathOf("new.png"), pathOf("old.png")));
}

TEST_F(ReadingQueueTest, ABatchHoldsTheNewestTwoHundredAndCountsThemDown) {
  for (int i = 0; i < 201; ++i) add(std::to_string(i) + ".png");
  reader_.answerByItself();
  std::vector<std::size_t> counts;
  QObject::connect(&queue_, &ReadingQueue::remainingChanged, &queue_, [&] { counts.push_back(queue_.remaining()); });
  queue_.start();
  EXPECT_EQ(queue_.remaining(), 200U);
  ASSERT_TRUE(ended(BatchEnd::Done));
  std::vector<std::size_t> expected;
  for (std::size_t i = 0; i <= 200; ++i) expected.push_back(200 - i);
  EXPECT_EQ(counts, expected);
  EXPECT_THAT(reader_.requests, SizeIs(200));
  ASSERT_THAT(database_->pendingOCR(10), SizeIs(1));
  EXPECT_EQ(database_->pendingOCR(10).front()->name, "0.png");
}

TEST_F(ReadingQueueTest, StartingWhileABatchRunsChangesNothingNotEvenWhatRemains) {
  add("a.png");
  add("b.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  reader_.answer(PictureReading{});
  ASSERT_TRUE(wasAsked(2));
  add("c.png");
  queue_.start();
  EXPECT_EQ(queue_.remaining(), 1U);
  reader_.answer(PictureReading{});
  ASSERT_TRUE(ended(BatchEnd::Done));
  EXPECT_THAT(reader_.requests, SizeIs(2));
}

TEST_F(ReadingQueueTest, WithNothingPendingNoBatchStarts) {
  queue_.start();
  EXPECT_FALSE(queue_.isRunning());
  Testing::runEventLoopFor(std::chrono::milliseconds(20));
  EXPECT_EQ(finished_.count(), 0);
}

TEST_F(ReadingQueueTest, AReaderThatIsMissingEndsTheBatchAndLeavesEverythingPending) {
  add("a.png");
  add("b.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  reader_.answer(std::nullopt);
  ASSERT_TRUE(ended(BatchEnd::CannotRead));
  EXPECT_EQ(queue_.remaining(), 0U);
  EXPECT_THAT(database_->pendingOCR(10), SizeIs(2));
  EXPECT_THAT(reader_.requests, SizeIs(1));
}

TEST_F(ReadingQueueTest, AShotRemovedWhileItIsReadIsNotBroughtBack) {
  const auto id = add("a.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  database_->remove(id, Database::IgnorePath::No);
  reader_.answer(readingOf({"text"}));
  ASSERT_TRUE(ended(BatchEnd::Done));
  EXPECT_FALSE(database_->shot(id));
  EXPECT_THAT(database_->searchIDs("text").value(), IsEmpty());
}

TEST_F(ReadingQueueTest, AShotRemovedBeforeItsTurnIsNotReadAndTheBatchGoesOn) {
  const auto second = add("a.png");
  add("b.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  database_->remove(second, Database::IgnorePath::No);
  reader_.answer(PictureReading{});
  ASSERT_TRUE(ended(BatchEnd::Done));
  EXPECT_THAT(reader_.paths(), ElementsAre(pathOf("b.png")));
}

TEST_F(ReadingQueueTest, AnIdThatWentToAnotherFileWhileReadingGetsTheTextOfThatFile) {
  const auto id = add("a.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  database_->remove(id, Database::IgnorePath::No);
  ASSERT_EQ(add("b.png"), id);
  reader_.answer(readingOf({"of a"}));
  ASSERT_TRUE(wasAsked(2));
  reader_.answer(readingOf({"of b"}));
  ASSERT_TRUE(ended(BatchEnd::Done));
  EXPECT_THAT(reader_.paths(), ElementsAre(pathOf("a.png"), pathOf("b.png")));
  EXPECT_EQ(database_->shot(id)->ocr, "of b");
}

TEST_F(ReadingQueueTest, AShotWhosePathChangesWhileItIsReadIsReadAtItsNewPlace) {
  const auto id = add("a.png");
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  std::filesystem::rename(pathOf("a.png"), pathOf("moved.png"));
  database_->setPath(id, pathOf("moved.png"), Database::Filed::Yes);
  reader_.answer(PictureReading{});
  ASSERT_TRUE(wasAsked(2));
  EXPECT_FALSE(database_->shot(id)->ocrDone);
  EXPECT_EQ(queue_.remaining(), 1U);
  reader_.answer(readingOf({"text"}));
  ASSERT_TRUE(ended(BatchEnd::Done));
  EXPECT_EQ(reader_.paths().back(), pathOf("moved.png"));
  EXPECT_EQ(database_->shot(id)->ocr, "text");
}

TEST_F(ReadingQueueTest, AShotFiledBeforeItsTurnIsReadAtItsNewPlace) {
  const auto id = add("a.png");
  queue_.start();
  std::filesystem::rename(pathOf("a.png"), pathOf("moved.png"));
  database_->setPath(id, pathOf("moved.png"), Database::Filed::Yes);
  ASSERT_TRUE(wasAsked(1));
  EXPECT_THAT(reader_.paths(), ElementsAre(pathOf("moved.png")));
}

TEST_F(ReadingQueueTest, AShotThatAnotherProcessHasReadMeanwhileIsPassedOver) {
  const auto id = add("a.png");
  queue_.start();
  const auto other = Database::open(cataloguePath()).value();
  other->setOCR(id, "read elsewhere", {});
  ASSERT_TRUE(ended(BatchEnd::Done));
  EXPECT_THAT(reader_.requests, IsEmpty());
  EXPECT_EQ(database_->shot(id)->ocr, "read elsewhere");
}

TEST_F(ReadingQueueTest, ACatalogueLockedByAnotherProcessWhileWritingLeavesTheShotPending) {
  const auto first = add("a.png");
  const auto second = add("b.png");
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(cataloguePath().c_str(), &other), SQLITE_OK);
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  reader_.answer(readingOf({"lost"}));
  ASSERT_EQ(sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(other);
  ASSERT_TRUE(wasAsked(2));
  reader_.answer(readingOf({"kept"}));
  ASSERT_TRUE(ended(BatchEnd::Done));
  EXPECT_FALSE(database_->shot(second)->ocrDone);
  EXPECT_EQ(database_->shot(first)->ocr, "kept");
  EXPECT_THAT(database_->pendingOCR(10), SizeIs(1));
}

TEST_F(ReadingQueueTest, ABatchOfWhichNothingCouldBeWrittenSaysSo) {
  add("a.png");
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(cataloguePath().c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  reader_.answer(readingOf({"lost"}));
  EXPECT_TRUE(ended(BatchEnd::NothingWritten));
  sqlite3_close(other);
}

TEST_F(ReadingQueueTest, AStatementThatCannotBePreparedLeavesTheShotPending) {
  add("a.png");
  const Testing::LogRecorder log;
  queue_.start();
  ASSERT_TRUE(wasAsked(1));
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(cataloguePath().c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "ALTER TABLE shots RENAME COLUMN ocr TO elsewhere", nullptr, nullptr, nullptr),
            SQLITE_OK);
  reader_.answer(readingOf({"lost"}));
  EXPECT_TRUE(hasEnded());
  ASSERT_EQ(sqlite3_exec(other, "ALTER TABLE shots RENAME COLUMN elsewhere TO ocr", nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(other);
  EXPECT_THAT(database_->pendingOCR(10), SizeIs(1));
  EXPECT_THAT(log.lines(), ::testing::Contains(::testing::StartsWith("Nimbrel SQL error: ")));
}

TEST_F(ReadingQueueTest, EndingInTheMiddleOfABatchLeavesTheRestPending) {
  const auto second = add("a.png");
  const auto first = add("b.png");
  {
    ReadingQueue queue(*database_, reader_);
    queue.start();
    ASSERT_TRUE(wasAsked(1));
    reader_.answer(readingOf({"text"}));
    ASSERT_TRUE(wasAsked(2));
  }
  reader_.answer(readingOf({"too late"}));
  EXPECT_EQ(database_->shot(first)->ocr, "text");
  EXPECT_FALSE(database_->shot(second)->ocrDone);
}

TEST_F(ReadingQueueTest, TheMainThreadIsFreeBetweenShotsThatNeedNoReading) {
  for (int i = 0; i < 20; ++i) addMissing(std::to_string(i) + ".png");
  queue_.start();
  bool wasFree = false;
  QObject::connect(&queue_, &ReadingQueue::remainingChanged, &queue_, [&] {
    QMetaObject::invokeMethod(
        &queue_, [&] { wasFree = wasFree || queue_.isRunning(); }, Qt::QueuedConnection);
  });
  ASSERT_TRUE(hasEnded());
  EXPECT_TRUE(wasFree);
}

}  // namespace
}  // namespace Nimbrel
