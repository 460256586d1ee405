#include "Views/Inspector/ItemFinder.h"

#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QMutex>
#include <QSemaphore>

#include <memory>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::waitUntil;

/// Answers for each text itself as the only item, when the test lets it.
struct HeldSearch {
  std::vector<DetectedItem> find(const std::string& text) {
    {
      const QMutexLocker lock(&mutex);
      begun.push_back(text);
    }
    turns.acquire();
    return {{.kind = DetectedItem::Kind::link, .text = text, .url = {}, .date = {}}};
  }
  [[nodiscard]] std::vector<std::string> texts() {
    const QMutexLocker lock(&mutex);
    return begun;
  }

  QMutex mutex;
  std::vector<std::string> begun;
  QSemaphore turns;
};

class ItemFinderTest : public ::testing::Test {
 protected:
  ItemFinderTest() {
    QObject::connect(finder_.get(), &ItemFinder::found, finder_.get(), [this](const std::vector<DetectedItem>& items) {
      answers_.push_back(items.empty() ? std::string() : items.front().text);
    });
  }
  // Searches that are under way belong to threads that would wait for ever.
  ~ItemFinderTest() override { search_->turns.release(1000); }

  void show(const std::string& text) { finder_->show(text, timestamp(0)); }
  [[nodiscard]] bool hasAnswered(const std::string& text) const {
    return waitUntil([&] { return !answers_.empty() && answers_.back() == text; });
  }

  std::shared_ptr<HeldSearch> search_ = std::make_shared<HeldSearch>();
  std::unique_ptr<ItemFinder> finder_ = std::make_unique<ItemFinder>(
      [search = search_](const std::string& text, Timestamp) { return search->find(text); });
  std::vector<std::string> answers_;
};

TEST_F(ItemFinderTest, TellsWhatItFindsInALaterTurn) {
  search_->turns.release();
  show("one");
  EXPECT_THAT(answers_, ElementsAre(""));
  EXPECT_TRUE(hasAnswered("one"));
}

TEST_F(ItemFinderTest, WhatComesLateForAnotherTextIsDropped) {
  show("one");
  show("two");
  show("three");
  search_->turns.release(2);
  EXPECT_TRUE(hasAnswered("three"));
  EXPECT_THAT(answers_, ElementsAre("", "", "", "three"));
  EXPECT_THAT(search_->texts(), ElementsAre("one", "three")) << "what nobody waited for was not begun";
}

TEST_F(ItemFinderTest, TheSameTextIsLookedThroughOnce) {
  search_->turns.release();
  show("one");
  EXPECT_TRUE(hasAnswered("one"));
  show("one");
  EXPECT_THAT(search_->texts(), ElementsAre("one"));
  EXPECT_THAT(answers_, ElementsAre("", "one"));
}

TEST_F(ItemFinderTest, AnEmptyTextHasNothingAndIsNotLookedThrough) {
  search_->turns.release();
  show("one");
  EXPECT_TRUE(hasAnswered("one"));
  show("");
  EXPECT_EQ(answers_.back(), "");
  EXPECT_THAT(search_->texts(), ElementsAre("one"));
}

TEST_F(ItemFinderTest, MayGoWhileItLooks) {
  show("one");
  ASSERT_TRUE(waitUntil([this] { return !search_->texts().empty(); }));
  finder_.reset();
  search_->turns.release();
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_THAT(answers_, ElementsAre(""));
}

}  // namespace
}  // namespace Nimbrel
