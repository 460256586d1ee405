#include "Store/Gallery.h"

#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <bit>

namespace Nimbrel::Gallery {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::namesOf;
using namespace std::chrono;

constexpr Timestamp at(year_month_day day, int hour, int minute) {
  return sys_days(day) + Seconds{hour * 3600.0 + minute * 60.0};
}

constexpr auto today = 2026y / March / 10;
constexpr auto now = at(today, 12, 0);

/// A list of shots with ids from 1, named after them unless a test says otherwise.
class GalleryTest : public ::testing::Test {
 protected:
  void add(Shot shot) {
    shot.id = static_cast<ShotID>(shots_.size()) + 1;
    if (shot.name.empty()) shot.name = std::to_string(shot.id);
    shots_.push_back(std::make_shared<const Shot>(std::move(shot)));
  }
  void add(const std::string& name, Timestamp date) { add({.name = name, .date = date}); }

  [[nodiscard]] std::vector<std::string> visibleUnder(Filter filter, Timestamp moment = now) const {
    return namesOf(visible(shots_, filter, matchedIDs_, {}, moment));
  }
  [[nodiscard]] std::vector<std::string> sortedBy(GallerySort sort) { return namesOf(sorted(shots_, sort, keys_)); }

  [[nodiscard]] std::vector<std::pair<std::string, std::vector<std::string>>> sectionsOf(Arrangement arrangement) {
    std::vector<std::pair<std::string, std::vector<std::string>>> titled;
    for (const auto& section : sections(shots_, arrangement, now, keys_)) {
      titled.emplace_back(section.title, namesOf(section.shots));
    }
    return titled;
  }

  ShotList shots_;
  std::optional<ShotIDSet> matchedIDs_;
  NameKeys keys_;
};

std::pair<std::string, std::vector<std::string>> section(std::string title, std::vector<std::string> names) {
  return {std::move(title), std::move(names)};
}

TEST_F(GalleryTest, TheInboxHoldsWhatIsNotFiled) {
  add({.filed = true});
  add({.filed = false});
  EXPECT_THAT(visibleUnder({Filter::Inbox{}}), ElementsAre("2"));
  EXPECT_THAT(visibleUnder({Filter::All{}}), ElementsAre("1", "2"));
}

TEST_F(GalleryTest, AtHalfPastMidnightTodayDoesNotShowAShotOfTenToMidnightWhileTheWeekDoes) {
  add("after midnight", at(today, 0, 10));
  add("before midnight", at(2026y / March / 9, 23, 50));
  const auto moment = at(today, 0, 30);
  EXPECT_THAT(visibleUnder({Filter::Today{}}, moment), ElementsAre("after midnight"));
  EXPECT_THAT(visibleUnder({Filter::Week{}}, moment), ElementsAre("after midnight", "before midnight"));
}

TEST_F(GalleryTest, TodayEndsAtMidnight) {
  add("tomorrow", at(2026y / March / 11, 0, 0));
  add("last minute", at(today, 23, 59));
  add("first moment", at(today, 0, 0));
  EXPECT_THAT(visibleUnder({Filter::Today{}}), ElementsAre("last minute", "first moment"));
}

TEST_F(GalleryTest, TheWeekIsSevenTimesTwentyFourHoursAndItsFirstMomentIsOutside) {
  add("future", now + Seconds{60});
  add("inside", now - Seconds{604'799.5});
  add("border", now - Seconds{604'800});
  EXPECT_THAT(visibleUnder({Filter::Week{}}), ElementsAre("future", "inside"));
}

TEST_F(GalleryTest, FavoritesAndSensitiveShotsHaveTheirFilters) {
  add({.favorite = true});
  add({.sensitive = {"Email"}});
  EXPECT_THAT(visibleUnder({Filter::Favorites{}}), ElementsAre("1"));
  EXPECT_THAT(visibleUnder({Filter::Sensitive{}}), ElementsAre("2"));
}

TEST_F(GalleryTest, ATagIsMatchedExactly) {
  add({.tags = {"work", "later"}});
  add({.tags = {"Work"}});
  add({.tags = {"workshop"}});
  EXPECT_THAT(visibleUnder({Filter::Tag{"work"}}), ElementsAre("1"));
}

TEST_F(GalleryTest, AProjectHoldsTheShotsWithItsTag) {
  add({.tags = {"project:Thesis"}});
  add({.tags = {"Thesis"}});
  add({.tags = {"project:Thesis 2"}});
  EXPECT_THAT(visibleUnder({Filter::Project{"Thesis"}}), ElementsAre("1"));
  EXPECT_THAT(visibleUnder({Filter::Tag{"project:Thesis"}}), ElementsAre("1"));
}

TEST_F(GalleryTest, ASavedSearchShowsAllThatTheSearchFinds) {
  add({});
  add({});
  EXPECT_THAT(visibleUnder({Filter::Saved{"1"}}), ElementsAre("1", "2"));
  matchedIDs_ = {2};
  EXPECT_THAT(visibleUnder({Filter::Saved{"1"}}), ElementsAre("2"));
}

TEST_F(GalleryTest, SearchAndFilterIntersect) {
  add({.favorite = true});
  add({.favorite = true});
  add({.favorite = false});
  matchedIDs_ = {2, 3};
  EXPECT_THAT(visibleUnder({Filter::Favorites{}}), ElementsAre("2"));
}

TEST_F(GalleryTest, AnEmptySearchResultHidesEverything) {
  add({});
  matchedIDs_.emplace();
  EXPECT_THAT(visibleUnder({Filter::All{}}), IsEmpty());
  EXPECT_THAT(sections({}, {.grouping = Grouping::ByDay}, now, keys_), IsEmpty());
  const auto ungrouped = sections({}, {.grouping = Grouping::None}, now, keys_);
  ASSERT_EQ(ungrouped.size(), 1U);
  EXPECT_EQ(ungrouped[0].title, "");
  EXPECT_THAT(ungrouped[0].shots, IsEmpty());
}

TEST_F(GalleryTest, IDsOfShotsThatAreGoneDoNoHarmInASearchResult) {
  add({});
  matchedIDs_ = {1, 99};
  EXPECT_THAT(visibleUnder({Filter::All{}}), ElementsAre("1"));
}

constexpr std::int64_t someHash = 0x0123'4567'89AB'CDEF;

/// The hash with so many bits turned round.
std::int64_t hashAtDistance(int distance) {
  return std::bit_cast<std::int64_t>(std::bit_cast<std::uint64_t>(someHash) ^ ((std::uint64_t{1} << distance) - 1));
}

TEST_F(GalleryTest, DistanceTenIsSimilarAndDistanceElevenIsNot) {
  add({.phash = someHash});
  add({.phash = hashAtDistance(10)});
  add({.phash = hashAtDistance(11)});
  EXPECT_THAT(visibleUnder({Filter::Similar{1}}), ElementsAre("1", "2"));
}

TEST_F(GalleryTest, AReferenceWithoutAHashIsSimilarToItselfAlone) {
  add({.phash = 0});
  add({.phash = 0});
  add({.phash = 1});
  EXPECT_THAT(visibleUnder({Filter::Similar{1}}), ElementsAre("1"));
}

TEST_F(GalleryTest, AShotWithoutAHashIsSimilarToNoOther) {
  add({.phash = 1});
  add({.phash = 0});
  EXPECT_THAT(visibleUnder({Filter::Similar{1}}), ElementsAre("1"));
}

TEST_F(GalleryTest, NothingIsSimilarToAShotThatIsGone) {
  add({.phash = someHash});
  EXPECT_THAT(visibleUnder({Filter::Similar{99}}), IsEmpty());
}

TEST_F(GalleryTest, FiltersOfGroupsThatAreGoneShowNothing) {
  add({});
  EXPECT_THAT(visibleUnder({Filter::Stack{"stack:app:mail", "Mail"}}), IsEmpty());
  EXPECT_THAT(visibleUnder({Filter::Stack{"", ""}}), IsEmpty());
  EXPECT_THAT(visibleUnder({Filter::Content{"app:mail", "Mail"}}), IsEmpty());
  EXPECT_THAT(visibleUnder({Filter::Smart{SmartCollection::code}}), IsEmpty());
}

TEST_F(GalleryTest, NewestAndOldestFirstLeaveEquallyOldShotsInTheirOrder) {
  add("c", now);
  add("a", now - Seconds{1});
  add("b", now - Seconds{1});
  add("d", now - Seconds{2});
  EXPECT_THAT(sortedBy(GallerySort::newest), ElementsAre("c", "a", "b", "d"));
  EXPECT_THAT(sortedBy(GallerySort::oldest), ElementsAre("d", "a", "b", "c"));
}

TEST_F(GalleryTest, AListInNoOrderIsSortedAllTheSame) {
  add("a", now - Seconds{1});
  add("c", now);
  add("d", now - Seconds{2});
  add("b", now - Seconds{1});
  EXPECT_THAT(sortedBy(GallerySort::newest), ElementsAre("c", "a", "b", "d"));
  EXPECT_THAT(sortedBy(GallerySort::oldest), ElementsAre("d", "a", "b", "c"));
}

TEST_F(GalleryTest, ByNameNumbersGoByTheirValueAndCaseDoesNotMatter) {
  add("Shot 10.png", now);
  add("shot 3.png", now);
  add("Shot 2.png", now);
  EXPECT_THAT(sortedBy(GallerySort::name), ElementsAre("Shot 2.png", "shot 3.png", "Shot 10.png"));
}

TEST_F(GalleryTest, ByNameEqualNamesStandNewestFirst) {
  add({.path = "/old", .name = "same.png", .date = now - Seconds{2}});
  add({.path = "/new", .name = "same.png", .date = now});
  add({.path = "/middle", .name = "same.png", .date = now - Seconds{1}});
  add({.path = "/middle, later", .name = "same.png", .date = now - Seconds{1}});
  std::vector<std::string> paths;
  for (const auto& shot : sorted(shots_, GallerySort::name, keys_)) paths.push_back(shot->path);
  EXPECT_THAT(paths, ElementsAre("/new", "/middle", "/middle, later", "/old"));
}

TEST_F(GalleryTest, EachDayIsASectionUnderItsTitle) {
  add("a", at(today, 11, 0));
  add("b", at(today, 0, 0));
  add("c", at(2026y / March / 9, 23, 59));
  add("d", at(2026y / January / 5, 8, 0));
  add("e", at(2025y / December / 30, 8, 0));
  EXPECT_THAT(sectionsOf({.sort = GallerySort::newest, .grouping = Grouping::ByDay}),
              ElementsAre(section("Today", {"a", "b"}), section("Yesterday", {"c"}), section("Monday, Jan 5", {"d"}),
                          section("Dec 30, 2025", {"e"})));
}

TEST_F(GalleryTest, WhenTheOldestComesFirstSoDoItsDay) {
  add("a", at(today, 11, 0));
  add("b", at(today, 10, 0));
  add("c", at(2026y / March / 9, 10, 0));
  EXPECT_THAT(sectionsOf({.sort = GallerySort::oldest, .grouping = Grouping::ByDay}),
              ElementsAre(section("Yesterday", {"c"}), section("Today", {"b", "a"})));
}

TEST_F(GalleryTest, ByNameDaysStillRunNewestFirstAndNamesOrderWithinADay) {
  add("b 10", at(today, 11, 0));
  add("b 9", at(today, 10, 0));
  add("a", at(2026y / March / 9, 10, 0));
  EXPECT_THAT(sectionsOf({.sort = GallerySort::name, .grouping = Grouping::ByDay}),
              ElementsAre(section("Today", {"b 9", "b 10"}), section("Yesterday", {"a"})));
}

TEST_F(GalleryTest, WithoutGroupingThereIsOneSectionWithoutATitle) {
  add("b", at(today, 11, 0));
  add("a", at(2026y / March / 9, 10, 0));
  EXPECT_THAT(sectionsOf({.sort = GallerySort::newest, .grouping = Grouping::None}),
              ElementsAre(section("", {"b", "a"})));
  EXPECT_THAT(sectionsOf({.sort = GallerySort::name, .grouping = Grouping::None}),
              ElementsAre(section("", {"a", "b"})));
}

TEST_F(GalleryTest, ADayWhoseShotsDoNotStandTogetherIsOneSection) {
  add("a", at(today, 11, 0));
  add("b", at(2026y / March / 9, 10, 0));
  add("c", at(today, 10, 0));
  EXPECT_THAT(sectionsOf({.sort = GallerySort::newest, .grouping = Grouping::ByDay}),
              ElementsAre(section("Today", {"a", "c"}), section("Yesterday", {"b"})));
}

TEST_F(GalleryTest, OnlyTheSortByNameKeepsKeys) {
  add("a", now);
  add("b", now);
  (void)sectionsOf({.sort = GallerySort::newest});
  EXPECT_EQ(keys_.size(), 0U);
  (void)sectionsOf({.sort = GallerySort::name});
  EXPECT_EQ(keys_.size(), 2U);
}

TEST_F(GalleryTest, ANewValueOfAShotIsSortedByItsNewName) {
  add("a", now);
  add("b", now);
  EXPECT_THAT(sortedBy(GallerySort::name), ElementsAre("a", "b"));
  Shot renamed = *shots_[0];
  renamed.name = "c";
  shots_[0] = std::make_shared<const Shot>(renamed);
  EXPECT_THAT(sortedBy(GallerySort::name), ElementsAre("b", "c"));
}

TEST(NameKeys, OfManyNamesAreThoseOfEachAlone) {
  ShotList shots;
  for (int i = 0; i < 5000; ++i) {
    shots.push_back(std::make_shared<const Shot>(Shot{.name = "Shot " + std::to_string(i * 7919 % 5000)}));
  }
  NameKeys all;
  all.prepare(shots);
  for (std::size_t i = 0; i < shots.size(); i += 500) {
    NameKeys one;
    one.prepare({shots[i]});
    EXPECT_EQ(all.of(shots[i]), one.of(shots[i]));
    EXPECT_FALSE(all.of(shots[i]).empty());
  }
}

TEST(NameKeys, OfShotsThatNobodyHasAreDroppedInTheEnd) {
  NameKeys keys;
  for (int snapshot = 0; snapshot < 50; ++snapshot) {
    ShotList shots;
    for (int i = 0; i < 1000; ++i) shots.push_back(std::make_shared<const Shot>(Shot{.name = std::to_string(i)}));
    keys.prepare(shots);
  }
  EXPECT_LT(keys.size(), 10'000U);
}

}  // namespace
}  // namespace Nimbrel::Gallery
