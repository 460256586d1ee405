#include "Store/Store.h"

#include "Support/FakePictureReader.h"
#include "Support/LogRecorder.h"
#include "Support/Pictures.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <sqlite3.h>

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using Testing::FakePictureReader;
using ::testing::Field;
using ::testing::IsEmpty;
using Testing::readingOf;
using Testing::shotNamed;
using ::testing::SizeIs;
using Testing::StoreHome;
using Testing::waitUntil;
using Wanted = PictureReader::Wanted;

bool isRead(const ShotPtr& shot) { return shot->ocrDone; }

class StoreReadingTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::unique_ptr<Store> open(ProcessRole role) {
    auto reader = std::make_unique<FakePictureReader>();
    reader_ = reader.get();
    Services services;
    services.pictureReader = std::move(reader);
    return home_.open(role, std::move(services));
  }
  [[nodiscard]] bool wasAsked(std::size_t times) {
    return waitUntil([&] { return reader_->requests.size() >= times; });
  }
  [[nodiscard]] static bool hasReadAll(const Store& store) {
    return waitUntil([&] { return !store.isWorking() && std::ranges::all_of(store.shots(), isRead); });
  }
  /// Shots whose files are no pictures, which the reader here does not mind.
  void addFiles(int count) {
    for (int i = 0; i < count; ++i) home_.addFile(home_.inLibrary("2026/" + std::to_string(i) + ".png"));
  }
  static AutomationRule tagging(const std::string& text, const std::string& tag) {
    return {.id = QUuid::createUuid(), .containsText = text, .tag = tag};
  }

  StoreHome home_;
  FakePictureReader* reader_ = nullptr;
};

TEST_F(StoreReadingTest, AShotThatAScanFindsIsReadAndTaggedByTheRules) {
  const auto path = home_.addFile(home_.desktop("Screenshot 1.png"));
  const auto store = open(ProcessRole::menuBarCompanion);
  store->settings().automationRules.set({tagging("invoice", "money")});
  ASSERT_TRUE(wasAsked(1));
  reader_->answer(readingOf({"Invoice 17"}, {"a code"}));
  ASSERT_TRUE(hasReadAll(*store));
  EXPECT_THAT(reader_->paths(), ElementsAre(path));
  const auto shot = shotNamed(*store, "Screenshot 1.png");
  EXPECT_EQ(shot->ocr, "Invoice 17");
  EXPECT_THAT(shot->barcodes, ElementsAre("a code"));
  EXPECT_THAT(shot->tags, ElementsAre("money"));
  EXPECT_EQ(store->status(), "Applied automatic rules");
}

TEST_F(StoreReadingTest, OfTwoHundredAndOneShotsTwoHundredAreReadThenReloadedAndRuledOverThenTheLast) {
  addFiles(201);
  const auto store = open(ProcessRole::menuBarCompanion);
  reader_->answerByItself();
  for (const auto& shot : store->shots()) reader_->contents[shot->path] = readingOf({"text"});
  store->settings().automationRules.set({tagging("text", "read")});
  EXPECT_EQ(store->ocrRemaining(), 200U);
  std::vector<std::size_t> remaining;
  std::vector<std::size_t> readAtReload;
  QObject::connect(store.get(), &Store::ocrRemainingChanged, store.get(),
                   [&] { remaining.push_back(store->ocrRemaining()); });
  QObject::connect(store.get(), &Store::shotsChanged, store.get(), [&] {
    // At the end of a batch of text the rules have run, and the next batch has not begun. Hashes may end in between.
    if (store->ocrRemaining() != 0) return;
    std::size_t tagged = 0;
    for (const auto& shot : store->shots()) tagged += shot->tags.empty() ? 0 : 1;
    if (tagged > 0) readAtReload.push_back(tagged);
  });
  ASSERT_TRUE(hasReadAll(*store));
  EXPECT_THAT(readAtReload, ElementsAre(200U, 201U));
  ASSERT_THAT(remaining, SizeIs(202));
  EXPECT_EQ(remaining.front(), 199U);
  EXPECT_EQ(remaining[199], 0U);
  EXPECT_EQ(remaining[200], 1U);
  EXPECT_EQ(remaining[201], 0U);
}

TEST_F(StoreReadingTest, StartingDuringABatchChangesNothingNotEvenWhatRemains) {
  addFiles(3);
  const auto store = open(ProcessRole::menuBarCompanion);
  ASSERT_TRUE(wasAsked(1));
  reader_->answer(PictureReading{});
  ASSERT_TRUE(wasAsked(2));
  QSignalSpy changed(store.get(), &Store::ocrRemainingChanged);
  store->startOCR();
  EXPECT_EQ(store->ocrRemaining(), 2U);
  EXPECT_EQ(changed.count(), 0);
}

TEST_F(StoreReadingTest, AShotFoundByAScanWhileABatchRunsIsReadAfterIt) {
  home_.addFile(home_.desktop("Screenshot 1.png"));
  const auto store = open(ProcessRole::menuBarCompanion);
  ASSERT_TRUE(wasAsked(1));
  home_.addFile(home_.desktop("Screenshot 2.png"));
  store->scan();
  EXPECT_EQ(store->ocrRemaining(), 1U);
  reader_->answer(readingOf({"one"}));
  ASSERT_TRUE(wasAsked(2));
  reader_->answer(readingOf({"two"}));
  ASSERT_TRUE(hasReadAll(*store));
  EXPECT_EQ(shotNamed(*store, "Screenshot 1.png")->ocr, "one");
  EXPECT_EQ(shotNamed(*store, "Screenshot 2.png")->ocr, "two");
}

TEST_F(StoreReadingTest, AFileDeletedWhileItIsReadLosesItsRowAndTheBatchEnds) {
  const auto path = home_.addFile(home_.desktop("Screenshot 1.png"));
  const auto store = open(ProcessRole::menuBarCompanion);
  ASSERT_TRUE(wasAsked(1));
  std::filesystem::remove(path);
  store->scan();
  reader_->answer(readingOf({"text"}));
  ASSERT_TRUE(waitUntil([&] { return !store->isWorking(); }));
  EXPECT_THAT(store->shots(), IsEmpty());
}

TEST_F(StoreReadingTest, TheListIsReloadedOnceABatchAndNotForEachShot) {
  addFiles(5);
  const auto store = open(ProcessRole::mainApplication);
  std::vector<std::string> paths;
  for (int i = 0; i < 5; ++i) paths.push_back(home_.inLibrary("2026/" + std::to_string(i) + ".png"));
  store->importFiles(paths);
  reader_->answerByItself();
  QSignalSpy shots(store.get(), &Store::shotsChanged);
  ASSERT_TRUE(hasReadAll(*store));
  EXPECT_EQ(shots.count(), 1);
}

TEST_F(StoreReadingTest, WithReadingSwitchedOffTextWaitsAndCodesAreLookedForAlone) {
  home_.addFile(home_.desktop("Screenshot 1.png"));
  home_.suiteOfOtherProcess()->set(QStringLiteral("runOCR"), false);
  const auto store = open(ProcessRole::menuBarCompanion);
  ASSERT_TRUE(wasAsked(1));
  EXPECT_EQ(reader_->requests.front().wanted, Wanted::Codes);
  reader_->answer(readingOf({}, {"x"}));
  ASSERT_TRUE(waitUntil([&] { return !store->isWorking(); }));
  EXPECT_THAT(store->shots().front()->barcodes, ElementsAre("x"));
  EXPECT_FALSE(store->shots().front()->ocrDone);
  store->settings().runOCR.set(true);
  store->scan();
  ASSERT_TRUE(wasAsked(2));
  EXPECT_EQ(reader_->requests.back().wanted, Wanted::TextAndCodes);
}

TEST_F(StoreReadingTest, AScanLooksAtEachPictureOnceForTextAndCodes) {
  addFiles(3);
  const auto store = open(ProcessRole::menuBarCompanion);
  reader_->answerByItself();
  ASSERT_TRUE(hasReadAll(*store));
  EXPECT_THAT(reader_->requests, SizeIs(3));
  EXPECT_THAT(reader_->requests, Each(::testing::Field(&FakePictureReader::Request::wanted, Wanted::TextAndCodes)));
  EXPECT_THAT(store->database().pendingCodes(1), IsEmpty());
}

TEST_F(StoreReadingTest, CodesOfShotsReadBeforeAreLookedForOnceReadingIsDone) {
  const auto old = home_.addFile(home_.desktop("Screenshot 1.png"));
  {
    const auto before = home_.open(ProcessRole::headless);
    before->database().setOCR(before->shots().front()->id, "read without codes", {});
  }
  const auto fresh = home_.addFile(home_.desktop("Screenshot 2.png"));
  const auto store = open(ProcessRole::menuBarCompanion);
  ASSERT_TRUE(wasAsked(1));
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_THAT(reader_->requests, ElementsAre(FakePictureReader::Request{fresh, Wanted::TextAndCodes}));
  reader_->answer(PictureReading{});
  ASSERT_TRUE(wasAsked(2));
  EXPECT_EQ(reader_->requests.back(), (FakePictureReader::Request{old, Wanted::Codes}));
}

TEST_F(StoreReadingTest, ABatchOfCodesDoesNotRestartItselfAndTheNextScanPicksUpTheRest) {
  addFiles(401);
  home_.suiteOfOtherProcess()->set(QStringLiteral("runOCR"), false);
  const auto store = open(ProcessRole::menuBarCompanion);
  reader_->answerByItself();
  ASSERT_TRUE(waitUntil([&] { return !store->isWorking(); }));
  EXPECT_THAT(store->database().pendingCodes(10), SizeIs(1));
  store->scan();
  ASSERT_TRUE(waitUntil([&] { return store->database().pendingCodes(10).empty(); }));
}

TEST_F(StoreReadingTest, CodesThatAnotherProcessLeavesPendingAreFoundAfterNoneWere) {
  const auto store = open(ProcessRole::mainApplication);
  store->startCodes();
  EXPECT_FALSE(store->isWorking());
  const auto path = home_.addFile(home_.desktop("Screenshot 1.png"));
  home_.open(ProcessRole::tool)->importFiles({path});
  store->startCodes();
  ASSERT_TRUE(wasAsked(1));
  EXPECT_EQ(reader_->requests.front(), (FakePictureReader::Request{path, Wanted::Codes}));
}

TEST_F(StoreReadingTest, AnImportReadsWhatItAddedAndLeavesHashesToTheNextScan) {
  const auto path = home_.desktop("holiday.png");
  Testing::writePicture(path);
  const auto store = open(ProcessRole::mainApplication);
  store->importFiles({path});
  ASSERT_TRUE(wasAsked(1));
  reader_->answer(readingOf({"text"}));
  ASSERT_TRUE(hasReadAll(*store));
  EXPECT_THAT(reader_->paths(), ElementsAre(path));
  EXPECT_EQ(store->shots().front()->phash, 0);
}

TEST_F(StoreReadingTest, WithAutomaticFilingAScanFilesTheInboxAndReadsItThere) {
  home_.addFile(home_.desktop("Screenshot 1.png"));
  home_.suiteOfOtherProcess()->set(QStringLiteral("autoFile"), true);
  const auto store = open(ProcessRole::menuBarCompanion);
  EXPECT_EQ(store->inboxCount(), 0U);
  EXPECT_EQ(store->status(), "Filed 1 shot into the library");
  ASSERT_TRUE(wasAsked(1));
  EXPECT_THAT(reader_->paths().front(), ::testing::StartsWith(home_.inLibrary("")));
}

TEST_F(StoreReadingTest, AHeadlessPassLeavesTextAndCodesAsItFoundThem) {
  home_.addFile(home_.desktop("Screenshot 1.png"));
  const auto store = open(ProcessRole::headless);
  store->startOCR();
  store->startCodes();
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_THAT(reader_->requests, IsEmpty());
  EXPECT_FALSE(store->isWorking());
  EXPECT_FALSE(store->shots().front()->ocrDone);
}

TEST_F(StoreReadingTest, AReaderThatIsMissingIsNotAskedAgainUntilTheNextScan) {
  addFiles(2);
  const auto store = open(ProcessRole::menuBarCompanion);
  reader_->answerByItself();
  reader_->isMissing = true;
  ASSERT_TRUE(waitUntil([&] { return !store->isWorking(); }));
  store->poll();
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_THAT(reader_->requests, ElementsAre(Field(&FakePictureReader::Request::wanted, Wanted::TextAndCodes),
                                             Field(&FakePictureReader::Request::wanted, Wanted::Codes)))
      << "one that cannot read text may still find codes";
  reader_->isMissing = false;
  store->scan();
  EXPECT_TRUE(hasReadAll(*store));
}

TEST_F(StoreReadingTest, WhileNothingCanBeWrittenBatchesBecomeRarer) {
  addFiles(1);
  // A tool does not poll by itself.
  const auto store = open(ProcessRole::tool);
  store->scan();
  reader_->answerByItself();
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(home_.path(".local/share/Nimbrel/nimbrel.sqlite").c_str(), &other), SQLITE_OK);
  store->workOff();
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  ASSERT_TRUE(waitUntil([&] { return !store->isWorking(); }));
  std::vector<int> pollsThatRead;
  for (int poll = 1; poll <= 16; ++poll) {
    const auto before = reader_->requests.size();
    store->poll();
    ASSERT_TRUE(waitUntil([&] { return !store->isWorking(); }));
    if (reader_->requests.size() > before) pollsThatRead.push_back(poll);
  }
  EXPECT_THAT(pollsThatRead, ElementsAre(1, 3, 7, 15));
  sqlite3_close(other);
}

TEST_F(StoreReadingTest, ABatchThatALockKeptFromBeingWrittenIsReadAgainAtTheNextPoll) {
  addFiles(1);
  const auto store = open(ProcessRole::mainApplication);
  store->scan();
  ASSERT_TRUE(wasAsked(1));
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(home_.path(".local/share/Nimbrel/nimbrel.sqlite").c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  reader_->answer(readingOf({"lost"}));
  EXPECT_EQ(store->ocrRemaining(), 0U) << "a restart at once would only lose it again";
  sqlite3_close(other);
  ASSERT_TRUE(wasAsked(2));
  reader_->answer(readingOf({"kept"}));
  ASSERT_TRUE(hasReadAll(*store));
  EXPECT_EQ(store->shots().front()->ocr, "kept");
}

TEST_F(StoreReadingTest, AStoreThatEndsInTheMiddleOfABatchLeavesTheRestPending) {
  addFiles(3);
  {
    const auto store = open(ProcessRole::menuBarCompanion);
    ASSERT_TRUE(wasAsked(1));
    reader_->answer(readingOf({"text"}));
    ASSERT_TRUE(wasAsked(2));
  }
  const auto later = home_.open(ProcessRole::tool);
  EXPECT_THAT(later->database().pendingOCR(10), SizeIs(2));
  EXPECT_THAT(later->database().searchIDs("text").value(), SizeIs(1));
}

class WorkOffTest : public StoreReadingTest {
 protected:
  [[nodiscard]] static bool isDone(Store& store) {
    QSignalSpy done(&store, &Store::workDone);
    store.workOff();
    EXPECT_EQ(done.count(), 0) << "before the caller could wait for it";
    return waitUntil([&] { return done.count() == 1; }) && !store.isWorking();
  }
};

TEST_F(WorkOffTest, AToolReadsHashesAndRunsTheRulesUntilAllIsDone) {
  for (int i = 0; i < 3; ++i) {
    Testing::writePicture(home_.desktop("Screenshot " + std::to_string(i) + ".png"), 64, 48, i);
  }
  const auto store = open(ProcessRole::tool);
  reader_->answerByItself();
  store->settings().automationRules.set(
      {{.id = QUuid::createUuid(), .containsText = "Screenshot", .fileToLibrary = true}});
  store->scan();
  ASSERT_TRUE(isDone(*store));
  ASSERT_THAT(store->shots(), SizeIs(3));
  for (const auto& shot : store->shots()) {
    EXPECT_TRUE(shot->ocrDone);
    EXPECT_TRUE(shot->filed);
    EXPECT_NE(shot->phash, 0) << "also of those that the rules filed while hashing went on";
  }
  EXPECT_THAT(store->database().pendingCodes(1), IsEmpty());
}

TEST_F(WorkOffTest, WithNothingToDoItIsDoneAtOnce) {
  const auto store = open(ProcessRole::tool);
  EXPECT_TRUE(isDone(*store));
  EXPECT_TRUE(isDone(*store)) << "and may be asked again";
}

TEST_F(WorkOffTest, PicturesThatCannotBeHashedDoNotMakeItEndless) {
  addFiles(3);
  const auto store = open(ProcessRole::tool);
  reader_->answerByItself();
  store->scan();
  ASSERT_TRUE(isDone(*store));
  EXPECT_THAT(store->database().pendingHash(10), SizeIs(3));
  EXPECT_THAT(store->database().pendingOCR(10), IsEmpty());
}

TEST_F(WorkOffTest, ItGoesOnBeyondWhatOneBatchOfCodesHolds) {
  addFiles(401);
  const auto store = open(ProcessRole::tool);
  store->settings().runOCR.set(false);
  reader_->answerByItself();
  store->scan();
  ASSERT_TRUE(isDone(*store));
  EXPECT_THAT(store->database().pendingCodes(10), IsEmpty());
}

TEST_F(WorkOffTest, WithoutAReaderItEndsAndLeavesTextAndCodesPending) {
  addFiles(2);
  const auto store = open(ProcessRole::tool);
  reader_->answerByItself();
  reader_->isMissing = true;
  store->scan();
  ASSERT_TRUE(isDone(*store));
  EXPECT_THAT(store->database().pendingOCR(10), SizeIs(2));
  EXPECT_THAT(store->database().pendingCodes(10), SizeIs(2));
}

TEST_F(WorkOffTest, ACatalogueThatTakesNoWritesDoesNotMakeItEndless) {
  addFiles(2);
  const auto store = open(ProcessRole::tool);
  reader_->answerByItself();
  store->scan();
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(home_.path(".local/share/Nimbrel/nimbrel.sqlite").c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_TRUE(isDone(*store));
  sqlite3_close(other);
  EXPECT_THAT(store->database().pendingOCR(10), SizeIs(2));
}

}  // namespace
}  // namespace Nimbrel
