#include "Store/DerivedState.h"

#include <gmock/gmock.h>

#include <QThreadPool>

#include <array>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

constexpr double someMoment = 1'773'000'000;

struct App {
  std::string name;
  std::string bundleID;
};

/// A shot taken in an application; the higher the id, the older.
Shot takenIn(ShotID id, const App& app, const std::string& text = "") {
  Shot shot;
  shot.id = id;
  shot.date = timestamp(someMoment - static_cast<double>(id));
  shot.appName = app.name;
  shot.bundleID = app.bundleID;
  shot.appAttributionTrusted = !app.name.empty();
  shot.ocr = text;
  shot.ocrDone = true;
  return shot;
}

ShotList listOf(const std::vector<Shot>& shots) {
  ShotList list;
  for (const auto& shot : shots) list.push_back(std::make_shared<const Shot>(shot));
  return list;
}

bool nothingIsLocked(const Shot& /*shot*/) { return false; }
bool isSensitive(const Shot& shot) { return !shot.sensitive.empty(); }

DerivedState derivedFrom(const std::vector<Shot>& shots) {
  DerivedState derived;
  derived.rebuild(listOf(shots), isSensitive);
  return derived;
}

std::vector<std::pair<std::string, std::size_t>> countsOf(const DerivedState& derived) {
  std::vector<std::pair<std::string, std::size_t>> counts;
  for (const auto& [group, count] : derived.contentGroups()) counts.emplace_back(group.title, count);
  return counts;
}

const App terminal{"Terminal", "org.terminal"};
const App notes{"Notes", "org.notes"};

TEST(DerivedState, OfNoShotsIsEmpty) {
  DerivedState derived;
  EXPECT_FALSE(derived.rebuild({}, nothingIsLocked));
  EXPECT_THAT(derived.contentGroups(), IsEmpty());
  EXPECT_THAT(derived.smartCounts(), IsEmpty());
  EXPECT_THAT(derived.shotStacks(), IsEmpty());
  EXPECT_EQ(derived.contentOf(1), ContentGroup::unknown());
  EXPECT_FALSE(derived.isIn(SmartCollection::code, 1));
  EXPECT_EQ(derived.stackOf(1), "");
}

TEST(DerivedState, GroupsAreListedTheLargestFirst) {
  const auto derived = derivedFrom({takenIn(1, notes), takenIn(2, terminal), takenIn(3, terminal)});
  EXPECT_THAT(countsOf(derived), ElementsAre(Pair("Terminal", 2), Pair("Notes", 1)));
  EXPECT_EQ(derived.contentOf(1).key, "app:notes");
  EXPECT_EQ(derived.contentOf(3).bundleID, "org.terminal");
}

TEST(DerivedState, GroupsOfOneSizeAreOrderedByTitleAsNamesAre) {
  const auto derived = derivedFrom({takenIn(1, {"b 10", ""}), takenIn(2, {"B 9", ""}), takenIn(3, {"a", ""})});
  EXPECT_THAT(countsOf(derived), ElementsAre(Pair("a", 1), Pair("B 9", 1), Pair("b 10", 1)));
}

TEST(DerivedState, TheDesktopAndTheUnknownAreNotListedAndNeverStack) {
  const auto derived = derivedFrom(
      {takenIn(1, {"Desktop", ""}), takenIn(2, {"Desktop", ""}), takenIn(3, {"", ""}), takenIn(4, {"", ""})});
  EXPECT_THAT(derived.contentGroups(), IsEmpty());
  EXPECT_THAT(derived.shotStacks(), IsEmpty());
  EXPECT_EQ(derived.contentOf(1), ContentGroup::desktop());
  EXPECT_EQ(derived.contentOf(3), ContentGroup::unknown());
  EXPECT_EQ(derived.stackOf(1), "");
}

TEST(DerivedState, AGroupIsThatOfItsFirstShot) {
  const auto derived = derivedFrom({takenIn(1, {"NOTES", "org.one"}), takenIn(2, {"Notes", "org.two"})});
  ASSERT_THAT(derived.contentGroups(), SizeIs(1));
  EXPECT_EQ(derived.contentGroups().front(),
            (ContentGroupCount{{"app:notes", "NOTES", ContentGroup::Kind::app, "org.one"}, 2}));
}

TEST(DerivedState, SmartCountsLeaveOutWhatHasNoMember) {
  const auto derived =
      derivedFrom({takenIn(1, notes, "error in { let x"), takenIn(2, notes, "failed"), takenIn(3, notes)});
  EXPECT_THAT(derived.smartCounts(), ElementsAre(Pair(SmartCollection::code, 1), Pair(SmartCollection::errors, 2)));
  EXPECT_TRUE(derived.isIn(SmartCollection::errors, 2));
  EXPECT_FALSE(derived.isIn(SmartCollection::code, 2));
  EXPECT_FALSE(derived.isIn(SmartCollection::errors, 3));
}

// Stacks

TEST(DerivedState, AStackHoldsTheShotsOfAnApplication) {
  const auto derived = derivedFrom({takenIn(1, notes), takenIn(2, terminal), takenIn(9, notes)});
  ASSERT_THAT(derived.shotStacks(), SizeIs(1));
  EXPECT_EQ(
      derived.shotStacks().front(),
      (ShotStack{"stack:app:notes", "Notes", "square.stack.3d.up", "org.notes", {1, 9}, timestamp(someMoment - 1)}));
  EXPECT_EQ(derived.stackOf(1), "stack:app:notes");
  EXPECT_EQ(derived.stackOf(9), "stack:app:notes");
}

TEST(DerivedState, AnApplicationWithOneShotHasNoStack) {
  const auto derived = derivedFrom({takenIn(1, notes)});
  EXPECT_THAT(derived.shotStacks(), IsEmpty());
  EXPECT_EQ(derived.stackOf(1), "");
}

TEST(DerivedState, TheStackWithTheNewestShotIsFirst) {
  const auto newest = takenIn(1, terminal);
  const auto derived =
      derivedFrom({takenIn(2, notes), takenIn(3, notes), takenIn(4, notes), takenIn(5, terminal), newest});
  ASSERT_THAT(derived.shotStacks(), SizeIs(2));
  EXPECT_EQ(derived.shotStacks()[0].title, "Terminal");
  EXPECT_EQ(derived.shotStacks()[0].newest, newest.date);
  EXPECT_EQ(derived.shotStacks()[1].title, "Notes");
}

TEST(DerivedState, OneKeyWithTwoIdentifiersMakesTwoStacksOfOneId) {
  const App other{"Notes", "org.other"};
  const auto derived = derivedFrom(
      {takenIn(1, notes), takenIn(2, other), takenIn(3, notes), takenIn(4, other), takenIn(5, {"Notes", ""})});
  ASSERT_THAT(derived.shotStacks(), SizeIs(2));
  EXPECT_EQ(derived.shotStacks()[0].id, derived.shotStacks()[1].id);
  EXPECT_THAT(derived.shotStacks()[0].shotIDs, UnorderedElementsAre(1, 3));
  EXPECT_THAT(derived.shotStacks()[1].shotIDs, UnorderedElementsAre(2, 4));
  EXPECT_EQ(derived.shotStacks()[1].bundleID, "org.other");
  EXPECT_EQ(derived.stackOf(2), derived.stackOf(1));
  EXPECT_EQ(derived.stackOf(5), "");
  EXPECT_THAT(countsOf(derived), ElementsAre(Pair("Notes", 5)));
}

// Locked shots

Shot sensitive(Shot shot) {
  shot.sensitive = {"Email"};
  return shot;
}

TEST(DerivedState, ALockedShotIsUnknownWhateverItsTextSays) {
  const auto derived = derivedFrom({sensitive(takenIn(1, notes, "incognito error"))});
  EXPECT_EQ(derived.contentOf(1), ContentGroup::unknown());
  EXPECT_THAT(derived.contentGroups(), IsEmpty());
}

TEST(DerivedState, ALockedShotCountsInSmartCollections) {
  const auto derived = derivedFrom({sensitive(takenIn(1, notes, "error"))});
  EXPECT_THAT(derived.smartCounts(), ElementsAre(Pair(SmartCollection::errors, 1)));
  EXPECT_TRUE(derived.isIn(SmartCollection::errors, 1));
}

TEST(DerivedState, ALockedDocumentIsStillADocument) {
  std::string words;
  for (int i = 0; i < 40; ++i) words += "word ";
  EXPECT_THAT(derivedFrom({sensitive(takenIn(1, {"Preview", ""}, words))}).smartCounts(),
              ElementsAre(Pair(SmartCollection::documents, 1)));
}

TEST(DerivedState, ALockedShotDoesNotCountTowardTheTwoOfAStack) {
  const auto derived = derivedFrom({takenIn(1, notes), sensitive(takenIn(2, notes))});
  EXPECT_THAT(derived.shotStacks(), IsEmpty());
}

TEST(DerivedState, UnlockingMakesAStackAppearAndLockingMakesItVanish) {
  const auto shots = listOf({takenIn(1, notes), sensitive(takenIn(2, notes))});
  DerivedState derived;
  EXPECT_TRUE(derived.rebuild(shots, isSensitive));
  EXPECT_TRUE(derived.rebuild(shots, nothingIsLocked));
  EXPECT_THAT(derived.shotStacks(), SizeIs(1));
  EXPECT_EQ(derived.stackOf(2), "stack:app:notes");
  EXPECT_EQ(derived.contentOf(2).title, "Notes");
  EXPECT_TRUE(derived.rebuild(shots, isSensitive));
  EXPECT_THAT(derived.shotStacks(), IsEmpty());
  EXPECT_EQ(derived.stackOf(1), "");
  EXPECT_THAT(countsOf(derived), ElementsAre(Pair("Notes", 1)));
}

// Changes

TEST(DerivedState, TheSameShotsChangeNothing) {
  const auto shots = listOf({takenIn(1, notes, "error"), takenIn(2, notes)});
  DerivedState derived;
  EXPECT_TRUE(derived.rebuild(shots, nothingIsLocked));
  EXPECT_FALSE(derived.rebuild(shots, nothingIsLocked));
  EXPECT_FALSE(derived.rebuild(listOf({*shots[0], *shots[1]}), nothingIsLocked));
}

TEST(DerivedState, AShotThatTellsNothingChangesNothing) {
  auto shots = listOf({takenIn(1, notes)});
  DerivedState derived;
  derived.rebuild(shots, nothingIsLocked);
  shots.push_back(std::make_shared<const Shot>(takenIn(2, {"", ""})));
  EXPECT_FALSE(derived.rebuild(shots, nothingIsLocked));
  shots.pop_back();
  EXPECT_FALSE(derived.rebuild(shots, nothingIsLocked));
}

TEST(DerivedState, AMembershipThatMovesIsAChangeThoughNoNumberIs) {
  DerivedState derived;
  derived.rebuild(listOf({takenIn(1, {"", ""}, "error"), takenIn(2, {"", ""})}), nothingIsLocked);
  EXPECT_TRUE(derived.rebuild(listOf({takenIn(1, {"", ""}), takenIn(2, {"", ""}, "error")}), nothingIsLocked));
  EXPECT_TRUE(derived.isIn(SmartCollection::errors, 2));
  EXPECT_FALSE(derived.isIn(SmartCollection::errors, 1));
}

TEST(DerivedState, AShotThatBecomesTheDesktopsIsAChange) {
  DerivedState derived;
  derived.rebuild(listOf({takenIn(1, {"", ""})}), nothingIsLocked);
  EXPECT_TRUE(derived.rebuild(listOf({takenIn(1, {"Desktop", ""})}), nothingIsLocked));
  EXPECT_TRUE(derived.rebuild({}, nothingIsLocked));
}

TEST(DerivedState, ANewerShotOfAStackIsAChange) {
  auto shots = listOf({takenIn(1, notes), takenIn(2, notes)});
  DerivedState derived;
  derived.rebuild(shots, nothingIsLocked);
  auto newer = *shots[0];
  newer.date += Seconds(5);
  shots[0] = std::make_shared<const Shot>(newer);
  EXPECT_TRUE(derived.rebuild(shots, nothingIsLocked));
  EXPECT_EQ(derived.shotStacks().front().newest, newer.date);
}

TEST(DerivedState, WhatIsRememberedIsWhatIsWorkedOutAnew) {
  ShotList shots;
  const std::array<std::string, 4> texts{"error", "let x = {", "", "incognito"};
  for (ShotID id = 1; id <= 500; ++id) {
    auto shot = takenIn(id, id % 3 == 0 ? notes : terminal, texts.at(static_cast<std::size_t>(id) % 4));
    if (id % 7 == 0) shot = sensitive(shot);
    shots.push_back(std::make_shared<const Shot>(shot));
  }
  DerivedState derived;
  derived.rebuild(shots, isSensitive);
  // One gone, one new, one changed, two in another order.
  shots.erase(shots.begin() + 10);
  shots.insert(shots.begin(), std::make_shared<const Shot>(takenIn(900, notes, "failed")));
  auto changed = *shots[100];
  changed.ocr = "func main() {";
  shots[100] = std::make_shared<const Shot>(changed);
  std::swap(shots[200], shots[201]);
  EXPECT_TRUE(derived.rebuild(shots, isSensitive));

  DerivedState fresh;
  fresh.rebuild(shots, isSensitive);
  EXPECT_EQ(derived.contentGroups(), fresh.contentGroups());
  EXPECT_EQ(derived.smartCounts(), fresh.smartCounts());
  EXPECT_EQ(derived.shotStacks(), fresh.shotStacks());
  for (ShotID id = 1; id <= 900; ++id) {
    EXPECT_EQ(derived.contentOf(id), fresh.contentOf(id)) << id;
    EXPECT_EQ(derived.stackOf(id), fresh.stackOf(id)) << id;
    for (const auto collection : allSmartCollections) {
      EXPECT_EQ(derived.isIn(collection, id), fresh.isIn(collection, id)) << id;
    }
  }
}

TEST(DerivedState, AFullPoolOnlyTakesTheHelpAway) {
  auto* pool = QThreadPool::globalInstance();
  const int threads = pool->maxThreadCount();
  pool->setMaxThreadCount(1);
  std::vector<Shot> shots;
  for (ShotID id = 1; id <= 300; ++id) shots.push_back(takenIn(id, notes, "error"));
  EXPECT_THAT(derivedFrom(shots).smartCounts(), ElementsAre(Pair(SmartCollection::errors, 300)));
  pool->setMaxThreadCount(threads);
}

}  // namespace
}  // namespace Nimbrel
