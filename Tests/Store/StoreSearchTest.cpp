#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::Eq;
using ::testing::IsEmpty;
using Testing::namesOf;
using ::testing::Optional;
using Testing::shotNamed;
using Testing::StoreHome;
using ::testing::UnorderedElementsAre;

class StoreSearchTest : public ::testing::Test {
 protected:
  StoreSearchTest() { store_->setFilter({Filter::All{}}); }

  /// Makes a shot of the Inbox; each is an hour older than the one before.
  ShotID add(const std::string& name, const std::string& text = {}) {
    age_ += Seconds{3600};
    Shot shot;
    shot.path = home_.desktop(name);
    shot.name = name;
    shot.date = home_.now - age_;
    const auto id = store_->database().insert(shot);
    store_->database().setOCR(id, text, {});
    store_->reload();
    return id;
  }

  [[nodiscard]] std::vector<std::string> visible() const { return namesOf(store_->visible()); }
  void search(const std::string& query) {
    store_->setQuery(query);
    store_->runSearch();
  }

  StoreHome home_;
  std::unique_ptr<Store> store_ = home_.open(ProcessRole::tool);
  Seconds age_{0};
};

TEST_F(StoreSearchTest, TheInboxIsTheFirstFilter) {
  EXPECT_EQ(home_.open(ProcessRole::tool)->filter(), Filter{Filter::Inbox{}});
}

TEST_F(StoreSearchTest, TheVisibleShotsRunNewestFirst) {
  add("a.png");
  add("b.png");
  EXPECT_THAT(visible(), ElementsAre("a.png", "b.png"));
}

TEST_F(StoreSearchTest, TheQueryHasNoEffectByItself) {
  add("a.png");
  store_->setQuery("zebra");
  EXPECT_THAT(visible(), ElementsAre("a.png"));
}

TEST_F(StoreSearchTest, ABlankQueryEndsTheSearch) {
  add("a.png", "red");
  search("zebra");
  ASSERT_TRUE(store_->matchedIDs());
  EXPECT_THAT(*store_->matchedIDs(), IsEmpty());
  EXPECT_THAT(visible(), IsEmpty());
  search(" \t ");
  EXPECT_FALSE(store_->matchedIDs());
  EXPECT_THAT(visible(), ElementsAre("a.png"));
}

TEST_F(StoreSearchTest, WhatASearchFindsHasASnippetWhereItsTextHasAHit) {
  add("a.png", "a red car");
  add("red.png", "no colour");
  add("b.png", "a blue car");
  search("red");
  EXPECT_THAT(visible(), ElementsAre("a.png", "red.png"));
  EXPECT_THAT(store_->snippet(*shotNamed(*store_, "a.png")), Optional(Eq("a \x02red\x03 car")));
  EXPECT_EQ(store_->snippet(*shotNamed(*store_, "red.png")), std::nullopt);
  EXPECT_EQ(store_->snippet(*shotNamed(*store_, "b.png")), std::nullopt);
  search("");
  EXPECT_EQ(store_->snippet(*shotNamed(*store_, "a.png")), std::nullopt);
}

TEST_F(StoreSearchTest, SnippetsAreThoseOfTheLastSearchAndNotOfTheQuery) {
  add("a.png", "a red car");
  search("red");
  store_->setQuery("car");
  EXPECT_THAT(store_->snippet(*shotNamed(*store_, "a.png")), Optional(Eq("a \x02red\x03 car")));
}

TEST_F(StoreSearchTest, NewShotsEnterTheResultWithTheNextSearch) {
  add("a.png", "red");
  search("red");
  add("b.png", "red");
  EXPECT_THAT(visible(), ElementsAre("a.png"));
  EXPECT_EQ(store_->snippet(*shotNamed(*store_, "b.png")), std::nullopt);
  store_->runSearch();
  EXPECT_THAT(visible(), ElementsAre("a.png", "b.png"));
}

TEST_F(StoreSearchTest, ShotsThatAreGoneDoNoHarmInTheResult) {
  const auto id = add("a.png", "red");
  add("b.png", "red");
  search("red");
  store_->database().remove(id, Database::IgnorePath::No);
  store_->reload();
  EXPECT_THAT(visible(), ElementsAre("b.png"));
}

TEST_F(StoreSearchTest, ASearchWithinTheFavoritesShowsOnlyFavoritesThatMatch) {
  store_->database().setFavorite(add("a.png", "red"), true);
  store_->database().setFavorite(add("b.png", "blue"), true);
  add("c.png", "red");
  store_->reload();
  store_->setFilter({Filter::Favorites{}});
  search("red");
  EXPECT_THAT(visible(), ElementsAre("a.png"));
}

TEST_F(StoreSearchTest, AnEmptyResultHasNoDaysAndOneSectionWithoutThem) {
  add("a.png");
  search("zebra");
  EXPECT_THAT(store_->sections(), IsEmpty());
  store_->settings().groupByDay.set(false);
  ASSERT_EQ(store_->sections().size(), 1U);
  EXPECT_EQ(store_->sections()[0].title, "");
  EXPECT_THAT(store_->sections()[0].shots, IsEmpty());
  EXPECT_THAT(store_->ordered(), IsEmpty());
}

TEST_F(StoreSearchTest, OrderedIsTheShotsOfTheSectionsInTurn) {
  add("b 10.png");
  add("b 9.png");
  age_ = Seconds{3 * 86'400.0};
  add("a.png");
  store_->settings().gallerySort.set(GallerySort::name);
  EXPECT_EQ(store_->sections().size(), 2U);
  EXPECT_THAT(namesOf(store_->ordered()), ElementsAre("b 9.png", "b 10.png", "a.png"));
  store_->settings().groupByDay.set(false);
  EXPECT_THAT(namesOf(store_->ordered()), ElementsAre("a.png", "b 9.png", "b 10.png"));
  store_->settings().gallerySort.set(GallerySort::oldest);
  EXPECT_THAT(namesOf(store_->ordered()), ElementsAre("a.png", "b 9.png", "b 10.png"));
}

TEST_F(StoreSearchTest, SectionsFollowTheClock) {
  home_.now = timestamp(20'522 * 86'400.0 + 23 * 3600);
  add("a.png");
  EXPECT_EQ(store_->sections().at(0).title, "Today");
  home_.now += Seconds{2 * 3600};
  EXPECT_EQ(store_->sections().at(0).title, "Yesterday");
}

TEST_F(StoreSearchTest, TodayFollowsTheClock) {
  home_.now = timestamp(20'522 * 86'400.0 + 30 * 60);
  add("before midnight.png");
  store_->setFilter({Filter::Today{}});
  EXPECT_THAT(visible(), IsEmpty());
  home_.now -= Seconds{40 * 60};
  EXPECT_THAT(visible(), ElementsAre("before midnight.png"));
}

TEST_F(StoreSearchTest, QuickFindLeavesTheSearchAloneAndTheFilterPlaysNoPart) {
  add("a.png", "red");
  add("b.png", "blue");
  search("blue");
  store_->setFilter({Filter::Favorites{}});
  EXPECT_THAT(namesOf(store_->matching("red")), ElementsAre("a.png"));
  EXPECT_THAT(store_->matching("zebra"), IsEmpty());
  EXPECT_THAT(store_->matching("  "), IsEmpty());
  EXPECT_EQ(store_->query(), "blue");
  EXPECT_EQ(store_->matchedIDs()->size(), 1U);
}

TEST_F(StoreSearchTest, ContentFiltersShowTheShotsOfTheirGroup) {
  store_->database().setApp(add("a.png"), "Firefox", "org.mozilla.firefox", Database::Trusted::Yes);
  store_->database().setApp(add("b.png"), "Firefox", "org.mozilla.firefox", Database::Trusted::Yes);
  add("c.png");
  store_->reload();
  ASSERT_EQ(store_->derived().contentGroups().size(), 1U);
  const auto group = store_->derived().contentGroups()[0].group;
  store_->setFilter({Filter::Content{group.key, group.title}});
  EXPECT_THAT(visible(), ElementsAre("a.png", "b.png"));
}

TEST_F(StoreSearchTest, AStackShowsTheShotsOfEveryApplicationOfItsTitle) {
  for (const auto* name : {"a.png", "b.png"}) {
    store_->database().setApp(add(name), "Editor", "org.example.editor", Database::Trusted::Yes);
  }
  for (const auto* name : {"c.png", "d.png"}) {
    store_->database().setApp(add(name), "Editor", "com.example.editor", Database::Trusted::Yes);
  }
  store_->reload();
  ASSERT_FALSE(store_->derived().shotStacks().empty());
  const auto stack = store_->derived().shotStacks()[0];
  store_->setFilter({Filter::Stack{stack.id, stack.title}});
  EXPECT_THAT(visible(), ElementsAre("a.png", "b.png", "c.png", "d.png"));
}

TEST_F(StoreSearchTest, AStackThatWasDissolvedByAReloadShowsNothing) {
  store_->database().setApp(add("a.png"), "Firefox", "org.mozilla.firefox", Database::Trusted::Yes);
  const auto second = add("b.png");
  store_->database().setApp(second, "Firefox", "org.mozilla.firefox", Database::Trusted::Yes);
  store_->reload();
  ASSERT_EQ(store_->derived().shotStacks().size(), 1U);
  const auto stack = store_->derived().shotStacks()[0];
  store_->setFilter({Filter::Stack{stack.id, stack.title}});
  EXPECT_THAT(visible(), ElementsAre("a.png", "b.png"));
  store_->database().remove(second, Database::IgnorePath::No);
  store_->reload();
  EXPECT_THAT(visible(), IsEmpty());
}

TEST_F(StoreSearchTest, SmartFiltersShowTheMembersOfTheirCollection) {
  add("a.png", "TypeError: undefined is not a function\nUncaught exception\nStack trace:\n at main (app.js:3)");
  add("b.png", "nothing of note");
  ASSERT_EQ(store_->derived().smartCounts().count(SmartCollection::errors), 1U);
  store_->setFilter({Filter::Smart{SmartCollection::errors}});
  EXPECT_THAT(visible(), ElementsAre("a.png"));
}

TEST_F(StoreSearchTest, ShowingSimilarShotsEndsTheSearchAndSelectsTheShot) {
  constexpr std::int64_t hash = 0x0F0F;
  const auto id = add("a.png", "red");
  store_->database().setHash(id, hash);
  store_->database().setHash(add("b.png", "blue"), hash ^ 1);
  add("c.png", "red");
  store_->reload();
  search("red");
  const QSignalSpy changes(store_.get(), &Store::searchResultChanged);
  store_->showSimilar(*shotNamed(*store_, "a.png"));
  EXPECT_EQ(store_->query(), "");
  EXPECT_FALSE(store_->matchedIDs());
  EXPECT_EQ(store_->snippet(*shotNamed(*store_, "a.png")), std::nullopt);
  EXPECT_EQ(store_->filter(), Filter{Filter::Similar{id}});
  EXPECT_THAT(store_->selection(), UnorderedElementsAre(id));
  EXPECT_THAT(visible(), ElementsAre("a.png", "b.png"));
  EXPECT_EQ(changes.size(), 1);
}

TEST_F(StoreSearchTest, ASavedSearchIsTrimmedAndStoredAndTold) {
  store_->setQuery("  red car\t");
  store_->saveCurrentSearch();
  EXPECT_THAT(store_->settings().savedSearches(), ElementsAre("red car"));
  EXPECT_EQ(store_->status(), "Saved \u201Cred car\u201D");
  EXPECT_THAT(home_.open(ProcessRole::tool)->settings().savedSearches(), ElementsAre("red car"));
}

TEST_F(StoreSearchTest, ASearchThatDiffersInTrailingBlanksFromASavedOneAddsNothing) {
  store_->settings().savedSearches.set({"red car"});
  store_->setQuery("red car  ");
  store_->saveCurrentSearch();
  EXPECT_THAT(store_->settings().savedSearches(), ElementsAre("red car"));
  EXPECT_EQ(store_->status(), "");
}

TEST_F(StoreSearchTest, ABlankSearchIsNotSaved) {
  store_->setQuery(" \t");
  store_->saveCurrentSearch();
  EXPECT_THAT(store_->settings().savedSearches(), IsEmpty());
  EXPECT_EQ(store_->status(), "");
}

TEST_F(StoreSearchTest, RemovingASavedSearchKeepsTheOthersInTheirOrder) {
  store_->settings().savedSearches.set({"b", "x", "a", "x"});
  store_->setFilter({Filter::Saved{"b"}});
  store_->removeSaved("x");
  EXPECT_THAT(store_->settings().savedSearches(), ElementsAre("b", "a"));
  EXPECT_EQ(store_->filter(), Filter{Filter::Saved{"b"}});
  EXPECT_EQ(store_->status(), "");
  EXPECT_THAT(home_.open(ProcessRole::tool)->settings().savedSearches(), ElementsAre("b", "a"));
}

TEST_F(StoreSearchTest, RemovingTheSavedSearchThatIsTheFilterLeavesTheGalleryNarrowed) {
  add("a.png", "red");
  add("b.png", "blue");
  store_->settings().savedSearches.set({"red"});
  store_->setFilter({Filter::Saved{"red"}});
  search("red");
  store_->removeSaved(store_->settings().savedSearches().front());
  EXPECT_EQ(store_->filter(), Filter{Filter::All{}});
  EXPECT_EQ(store_->query(), "red");
  EXPECT_THAT(visible(), ElementsAre("a.png"));
  EXPECT_THAT(store_->settings().savedSearches(), IsEmpty());
}

TEST_F(StoreSearchTest, ASearchSavedInOneProcessIsNotSeenByOneThatRuns) {
  const auto companion = home_.open(ProcessRole::mainApplication);
  store_->setQuery("red");
  store_->saveCurrentSearch();
  companion->poll();
  EXPECT_THAT(companion->settings().savedSearches(), IsEmpty());
}

TEST_F(StoreSearchTest, WhatChangesIsTold) {
  const QSignalSpy filters(store_.get(), &Store::filterChanged);
  const QSignalSpy queries(store_.get(), &Store::queryChanged);
  const QSignalSpy results(store_.get(), &Store::searchResultChanged);
  store_->setFilter({Filter::Tag{"work"}});
  store_->setFilter({Filter::Tag{"work"}});
  store_->setQuery("red");
  store_->setQuery("red");
  store_->runSearch();
  EXPECT_EQ(filters.size(), 1);
  EXPECT_EQ(queries.size(), 1);
  EXPECT_EQ(results.size(), 1);
}

TEST_F(StoreSearchTest, ALongerQueryWithTheSameResultIsToldBecauseOtherWordsStandOut) {
  add("a.png", "red");
  search("re");
  const QSignalSpy results(store_.get(), &Store::searchResultChanged);
  search("red");
  EXPECT_EQ(results.size(), 1);
}

}  // namespace
}  // namespace Nimbrel
