#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

namespace Nimbrel {
namespace {

using Direction = Store::Direction;
using Extend = Store::Extend;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::namesOf;
using Testing::shotNamed;
using Testing::StoreHome;

class SelectionTest : public ::testing::Test {
 protected:
  /// Twelve shots of the Inbox, newest first: "0" to "11".
  SelectionTest() {
    store_->setFilter({Filter::All{}});
    const Database::QuickCommits quickly(store_->database());
    for (int i = 0; i < 12; ++i) {
      Shot shot;
      shot.name = std::to_string(i);
      shot.path = home_.desktop(shot.name);
      shot.date = home_.now - Seconds{60.0 * i};
      store_->database().insert(shot);
    }
    store_->reload();
  }

  [[nodiscard]] ShotID idOf(int number) const { return shotNamed(*store_, std::to_string(number))->id; }
  void select(std::initializer_list<int> numbers) {
    ShotIDSet ids;
    for (const int number : numbers) ids.insert(idOf(number));
    store_->setSelection(ids);
  }
  /// Hides all but these.
  void show(std::initializer_list<int> numbers) {
    for (const int number : numbers) store_->addTag("shown", {shotNamed(*store_, std::to_string(number))});
    store_->setFilter({Filter::Tag{"shown"}});
  }
  [[nodiscard]] std::vector<int> selected() const {
    std::vector<int> numbers;
    for (const auto& shot : store_->shots()) {
      if (store_->selection().contains(shot->id)) numbers.push_back(std::stoi(shot->name));
    }
    return numbers;
  }

  StoreHome home_;
  std::unique_ptr<Store> store_ = home_.open(ProcessRole::tool);
};

TEST_F(SelectionTest, TheSelectedShotsAreThoseThatAreVisibleInTheirOrder) {
  select({5, 2, 9});
  EXPECT_THAT(namesOf(store_->selectedShots()), ElementsAre("2", "5", "9"));
  show({9, 2, 1});
  EXPECT_THAT(namesOf(store_->selectedShots()), ElementsAre("2", "9"));
}

TEST_F(SelectionTest, OnlyASingleShotIsFocused) {
  EXPECT_EQ(store_->focused(), std::nullopt);
  select({3, 4});
  EXPECT_EQ(store_->focused(), std::nullopt);
  select({3});
  EXPECT_EQ(store_->focused(), shotNamed(*store_, "3"));
}

TEST_F(SelectionTest, AShotThatTheFilterHidesStaysFocused) {
  select({3});
  show({4});
  EXPECT_EQ(store_->focused(), shotNamed(*store_, "3"));
}

TEST_F(SelectionTest, AnIdWithoutAShotIsNotFocused) {
  store_->setSelection({4711});
  EXPECT_EQ(store_->focused(), std::nullopt);
}

TEST_F(SelectionTest, AllAreThoseThatAreVisible) {
  show({1, 2});
  select({7});
  store_->selectAll();
  EXPECT_THAT(selected(), ElementsAre(1, 2));
}

TEST_F(SelectionTest, AllOfNothingIsNothing) {
  show({});
  select({7});
  store_->selectAll();
  EXPECT_THAT(selected(), IsEmpty());
}

TEST_F(SelectionTest, WithoutASelectionAMoveSelectsTheFirstShot) {
  store_->move(Direction::Down, Extend::No);
  EXPECT_THAT(selected(), ElementsAre(0));
}

TEST_F(SelectionTest, WithoutASelectionSoDoesAnExtension) {
  store_->move(Direction::Down, Extend::Yes);
  EXPECT_THAT(selected(), ElementsAre(0));
}

TEST_F(SelectionTest, FromAShotThatIsHiddenAMoveSelectsTheFirst) {
  show({4, 5});
  select({7});
  store_->move(Direction::Right, Extend::Yes);
  EXPECT_THAT(selected(), ElementsAre(4));
}

TEST_F(SelectionTest, AmongNoShotsNothingMoves) {
  show({});
  select({7});
  store_->move(Direction::Right, Extend::No);
  EXPECT_THAT(selected(), ElementsAre(7));
}

TEST_F(SelectionTest, MovesByAShotOrByARowOfTheGrid) {
  store_->setGridColumns(5);
  select({3});
  store_->move(Direction::Right, Extend::No);
  EXPECT_THAT(selected(), ElementsAre(4));
  store_->move(Direction::Down, Extend::No);
  EXPECT_THAT(selected(), ElementsAre(9));
  store_->move(Direction::Left, Extend::No);
  EXPECT_THAT(selected(), ElementsAre(8));
  store_->move(Direction::Up, Extend::No);
  EXPECT_THAT(selected(), ElementsAre(3));
}

TEST_F(SelectionTest, UntilTheGalleryIsLaidOutARowIsOneShot) {
  EXPECT_EQ(store_->gridColumns(), 1);
  select({3});
  store_->move(Direction::Down, Extend::No);
  EXPECT_THAT(selected(), ElementsAre(4));
  store_->setGridColumns(0);
  store_->move(Direction::Down, Extend::No);
  EXPECT_THAT(selected(), ElementsAre(5));
}

TEST_F(SelectionTest, UpFromTheFirstShotStaysThere) {
  store_->setGridColumns(5);
  select({0});
  store_->move(Direction::Up, Extend::No);
  EXPECT_THAT(selected(), ElementsAre(0));
}

TEST_F(SelectionTest, UpWithinTheFirstRowLandsOnTheFirstShot) {
  store_->setGridColumns(5);
  select({2});
  store_->move(Direction::Up, Extend::No);
  EXPECT_THAT(selected(), ElementsAre(0));
}

TEST_F(SelectionTest, DownWithinTheLastRowLandsOnTheLastShot) {
  store_->setGridColumns(5);
  select({9});
  store_->move(Direction::Down, Extend::No);
  EXPECT_THAT(selected(), ElementsAre(11));
}

TEST_F(SelectionTest, MovesFollowTheOrderOfTheGallery) {
  store_->settings().gallerySort.set(GallerySort::oldest);
  select({3});
  store_->move(Direction::Right, Extend::No);
  EXPECT_THAT(selected(), ElementsAre(2));
}

TEST_F(SelectionTest, AnExtensionAddsAllUpToItsTarget) {
  store_->setGridColumns(5);
  select({3});
  store_->move(Direction::Down, Extend::Yes);
  EXPECT_THAT(selected(), ElementsAre(3, 4, 5, 6, 7, 8));
}

TEST_F(SelectionTest, AnExtensionBackwardsAddsTheSame) {
  store_->setGridColumns(5);
  select({8});
  store_->move(Direction::Up, Extend::Yes);
  EXPECT_THAT(selected(), ElementsAre(3, 4, 5, 6, 7, 8));
}

TEST_F(SelectionTest, AnExtensionTakesNothingAway) {
  select({3, 4, 5});
  store_->move(Direction::Left, Extend::Yes);
  const auto after = selected();
  EXPECT_THAT(after, ::testing::IsSupersetOf({3, 4, 5}));
  EXPECT_LE(after.size(), 4U);
}

TEST_F(SelectionTest, AMoveOutOfManyLeavesOneBesideThem) {
  select({3, 4, 5});
  store_->move(Direction::Right, Extend::No);
  EXPECT_THAT(selected(), ::testing::AnyOf(ElementsAre(4), ElementsAre(5), ElementsAre(6)));
}

TEST_F(SelectionTest, AMoveIsToldOnce) {
  select({3});
  const QSignalSpy told(store_.get(), &Store::selectionChanged);
  store_->move(Direction::Right, Extend::No);
  EXPECT_EQ(told.count(), 1);
  select({0});
  store_->move(Direction::Left, Extend::No);
  EXPECT_EQ(told.count(), 2) << "the last one leads nowhere";
}

class Sheets : public ::testing::Test {
 protected:
  StoreHome home_;
  std::unique_ptr<Store> store_ = home_.open(ProcessRole::tool);
};

TEST_F(Sheets, AreShownOnDemandEachByItself) {
  struct Sheet {
    bool (Store::*isShown)() const;
    void (Store::*show)(bool);
    void (Store::*changed)();
  };
  const std::vector<Sheet> sheets{
      {&Store::showPurge, &Store::setShowPurge, &Store::showPurgeChanged},
      {&Store::showDuplicates, &Store::setShowDuplicates, &Store::showDuplicatesChanged},
      {&Store::showShrink, &Store::setShowShrink, &Store::showShrinkChanged},
      {&Store::showCleanup, &Store::setShowCleanup, &Store::showCleanupChanged},
      {&Store::showRecordingTools, &Store::setShowRecordingTools, &Store::showRecordingToolsChanged},
  };
  for (const auto& sheet : sheets) {
    const QSignalSpy told(store_.get(), sheet.changed);
    EXPECT_FALSE((*store_.*sheet.isShown)());
    (*store_.*sheet.show)(true);
    (*store_.*sheet.show)(true);
    for (const auto& other : sheets) EXPECT_EQ((*store_.*other.isShown)(), &other == &sheet);
    EXPECT_EQ(told.count(), 1);
    (*store_.*sheet.show)(false);
    EXPECT_EQ(told.count(), 2);
  }
}

}  // namespace
}  // namespace Nimbrel
