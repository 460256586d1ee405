#include "Store/HashQueue.h"

#include "Support/Pictures.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::shotNamed;
using Testing::StoreHome;
using Testing::waitUntil;
using Testing::writePicture;

class HashQueueTest : public ::testing::Test {
 protected:
  StoreHome home_;
};

TEST_F(HashQueueTest, AScanHashesInTheBackgroundAndReloads) {
  writePicture(home_.desktop("Screenshot 1.png"), 200, 100, 1);
  writePicture(home_.desktop("Screenshot 2.png"), 200, 100, 2);
  const auto store = home_.open(ProcessRole::menuBarCompanion);
  ASSERT_TRUE(waitUntil(
      [&] { return std::ranges::all_of(store->shots(), [](const ShotPtr& shot) { return shot->phash != 0; }); }));
  EXPECT_NE(shotNamed(*store, "Screenshot 1.png")->phash, shotNamed(*store, "Screenshot 2.png")->phash);
}

TEST_F(HashQueueTest, AFileThatCannotBeDecodedStaysPendingAndTheBatchEnds) {
  writePicture(home_.desktop("Screenshot good.png"), 200, 100, 1);
  home_.addFile(home_.desktop("Screenshot bad.png"));
  const auto store = home_.open(ProcessRole::menuBarCompanion);
  ASSERT_TRUE(waitUntil([&] { return shotNamed(*store, "Screenshot good.png")->phash != 0; }));
  EXPECT_EQ(shotNamed(*store, "Screenshot bad.png")->phash, 0);
  ASSERT_EQ(store->database().pendingHash(10).size(), 1U);
}

TEST_F(HashQueueTest, StartingWhileABatchRunsChangesNothing) {
  writePicture(home_.desktop("Screenshot 1.png"));
  const auto store = home_.open(ProcessRole::mainApplication);
  store->importFiles({home_.desktop("Screenshot 1.png")});
  HashQueue queue(store->database());
  QSignalSpy finished(&queue, &HashQueue::finished);
  queue.start();
  EXPECT_TRUE(queue.isRunning());
  queue.start();
  ASSERT_TRUE(waitUntil([&] { return !queue.isRunning(); }));
  EXPECT_EQ(finished.count(), 1);
}

TEST_F(HashQueueTest, WithNothingPendingNoBatchStarts) {
  const auto store = home_.open(ProcessRole::mainApplication);
  HashQueue queue(store->database());
  QSignalSpy finished(&queue, &HashQueue::finished);
  queue.start();
  EXPECT_FALSE(queue.isRunning());
  EXPECT_EQ(finished.count(), 0);
}

TEST_F(HashQueueTest, EndingInTheMiddleOfABatchLeavesTheRestPending) {
  for (int i = 0; i < 5; ++i) writePicture(home_.desktop("Screenshot " + std::to_string(i) + ".png"), 64, 48, i);
  const auto store = home_.open(ProcessRole::mainApplication);
  for (int i = 0; i < 5; ++i) store->importFiles({home_.desktop("Screenshot " + std::to_string(i) + ".png")});
  {
    HashQueue queue(store->database());
    queue.start();
  }
  EXPECT_EQ(store->database().pendingHash(10).size(), 5U);
}

TEST_F(HashQueueTest, HashingAllCountsTheHashedAndLogsEach) {
  writePicture(home_.desktop("Screenshot 1.png"), 64, 48, 1);
  home_.addFile(home_.desktop("Screenshot bad.png"));
  const auto store = home_.open(ProcessRole::mainApplication);
  store->importFiles({home_.desktop("Screenshot 1.png"), home_.desktop("Screenshot bad.png")});
  std::vector<std::string> logged;
  EXPECT_EQ(store->hashAllPending([&](std::int64_t, const Shot& shot) { logged.push_back(shot.name); }), 1U);
  EXPECT_EQ(logged.size(), 2U);
  EXPECT_NE(shotNamed(*store, "Screenshot 1.png")->phash, 0);
  EXPECT_EQ(store->hashAllPending({}), 0U);
}

TEST_F(HashQueueTest, HashingAllTakesTheNewestFiveThousand) {
  const auto store = home_.open(ProcessRole::mainApplication);
  for (int i = 0; i < 6000; ++i) {
    Shot shot;
    shot.path = "/missing/" + std::to_string(i) + ".png";
    shot.name = std::to_string(i);
    shot.date = timestamp(i);
    store->database().insert(shot);
  }
  std::vector<std::string> logged;
  store->hashAllPending([&](std::int64_t, const Shot& shot) { logged.push_back(shot.name); });
  ASSERT_EQ(logged.size(), 5000U);
  EXPECT_EQ(logged.front(), "5999");
  EXPECT_EQ(logged.back(), "1000");
}

}  // namespace
}  // namespace Nimbrel
