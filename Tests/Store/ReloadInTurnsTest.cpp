#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <sqlite3.h>

#include <algorithm>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::waitUntil;

/// Far more than can be read in one turn.
constexpr std::size_t manyShots = 40'000;

/// A window's Store over a large catalogue that another process writes to.
class ReloadInTurns : public ::testing::Test {
 protected:
  ReloadInTurns() {
    store_ = home_.open(ProcessRole::tool);
    const auto file = home_.folders().applicationSupport + "/nimbrel.sqlite";
    sqlite3_open(file.c_str(), &other_);
    writeElsewhere("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                   std::to_string(manyShots) +
                   ") INSERT INTO shots (path, name, date, added, ocr, ocrDone, sensitive) "
                   "SELECT '/s/' || i, i || '.png', i / 3, i, 'Google Chrome ' || i, 1, "
                   "CASE i WHEN 7 THEN 'Email' ELSE '' END FROM n");
  }
  ~ReloadInTurns() override { sqlite3_close(other_); }

  void open() {
    store_ = home_.open(ProcessRole::mainApplication);
    ASSERT_TRUE(waitUntil([this] { return store_->shots().size() == manyShots; }));
  }
  void writeElsewhere(const std::string& statement) const {
    ASSERT_EQ(sqlite3_exec(other_, statement.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
  }
  [[nodiscard]] const Shot& shot(ShotID id) const {
    return **std::ranges::find(store_->shots(), id, [](const ShotPtr& one) { return one->id; });
  }
  [[nodiscard]] std::size_t countOfGroup() const {
    const auto& groups = store_->derived().contentGroups();
    return groups.empty() ? 0 : groups.front().count;
  }

  Testing::StoreHome home_;
  sqlite3* other_ = nullptr;
  std::unique_ptr<Store> store_;
};

TEST_F(ReloadInTurns, TheNewestShotsAreThereAtOnceAndTheRestLater) {
  store_ = home_.open(ProcessRole::mainApplication);
  ASSERT_FALSE(store_->shots().empty());
  EXPECT_LT(store_->shots().size(), manyShots);
  EXPECT_EQ(store_->shots().front()->name, "40000.png");
  EXPECT_EQ(countOfGroup(), store_->shots().size());
  ASSERT_TRUE(waitUntil([this] { return store_->shots().size() == manyShots; }));
  EXPECT_EQ(countOfGroup(), manyShots - 1) << "one is locked";
}

TEST_F(ReloadInTurns, ComesToWhatAReloadAtOnceComesTo) {
  open();
  const auto read = store_->shots();
  store_->reload();
  EXPECT_EQ(store_->shots(), read) << "in this order, equally old shots included";
  const auto other = home_.open(ProcessRole::tool);
  EXPECT_EQ(other->derived().contentGroups(), store_->derived().contentGroups());
}

TEST_F(ReloadInTurns, WhatAnotherProcessChangedIsToldOnceWhenAllIsRead) {
  open();
  const QSignalSpy told(store_.get(), &Store::shotsChanged);
  writeElsewhere("UPDATE shots SET note = 'new', tags = 'late,project:x' WHERE id = 20000");
  writeElsewhere("DELETE FROM shots WHERE id = 30000");
  store_->setSelection({20000, 30000});
  store_->poll();
  EXPECT_EQ(told.count(), 0);
  ASSERT_TRUE(waitUntil([&] { return told.count() > 0; }));
  EXPECT_EQ(told.count(), 1);
  EXPECT_EQ(shot(20000).note, "new");
  EXPECT_EQ(store_->shots().size(), manyShots - 1);
  EXPECT_THAT(store_->tags(), ElementsAre("late"));
  EXPECT_THAT(store_->selection(), ElementsAre(20000));
  EXPECT_EQ(countOfGroup(), manyShots - 2);
}

TEST_F(ReloadInTurns, UnchangedShotsAreShared) {
  open();
  const auto former = store_->shots();
  const QSignalSpy told(store_.get(), &Store::shotsChanged);
  writeElsewhere("INSERT INTO shots (path, name, date, added) VALUES ('/s/x', 'x.png', 100000, 1)");
  store_->poll();
  ASSERT_TRUE(waitUntil([&] { return told.count() > 0; }));
  ASSERT_EQ(store_->shots().size(), manyShots + 1);
  EXPECT_TRUE(std::ranges::equal(former.begin(), former.end(), store_->shots().begin() + 1, store_->shots().end()));
}

TEST_F(ReloadInTurns, TheReloadOfAnOperationReadsAllAtOnce) {
  open();
  const QSignalSpy told(store_.get(), &Store::shotsChanged);
  writeElsewhere("UPDATE shots SET note = 'new' WHERE id = 5");
  store_->poll();
  store_->database().setFavorite(6, true);
  store_->reload();
  EXPECT_EQ(told.count(), 1);
  EXPECT_EQ(shot(5).note, "new");
  EXPECT_TRUE(shot(6).favorite);
  Testing::runEventLoopFor(std::chrono::milliseconds(300));
  EXPECT_EQ(told.count(), 1) << "the other reading has been given up";
}

TEST_F(ReloadInTurns, WhatIsLockedMeanwhileIsLocked) {
  open();
  store_->settings().protectSensitive.set(false);
  store_->reload();
  EXPECT_EQ(countOfGroup(), manyShots);
  const QSignalSpy told(store_.get(), &Store::shotsChanged);
  writeElsewhere("UPDATE shots SET note = 'new' WHERE id = 5");
  store_->poll();
  store_->settings().protectSensitive.set(true);
  ASSERT_TRUE(waitUntil([&] { return told.count() > 0; }));
  EXPECT_EQ(countOfGroup(), manyShots - 1);
  EXPECT_EQ(store_->derived().contentOf(7), ContentGroup::unknown());
}

TEST_F(ReloadInTurns, AChangeDuringTheReadingComesWithTheNextPoll) {
  open();
  writeElsewhere("UPDATE shots SET note = 'first' WHERE id = 5");
  store_->poll();
  writeElsewhere("UPDATE shots SET note = 'second' WHERE id = 39999");
  ASSERT_TRUE(waitUntil([this] {
    store_->poll();
    return shot(39999).note == "second";
  }));
  EXPECT_EQ(shot(5).note, "first");
}

TEST_F(ReloadInTurns, AStoreMayGoWhileItReads) {
  store_ = home_.open(ProcessRole::mainApplication);
  EXPECT_LT(store_->shots().size(), manyShots);
  store_.reset();
  Testing::runEventLoopFor(std::chrono::milliseconds(10));
}

}  // namespace
}  // namespace Nimbrel
