#include "Foundation/Formats.h"

#include <gmock/gmock.h>

#include <unicode/timezone.h>

#include <future>
#include <limits>
#include <memory>
#include <vector>

namespace Nimbrel::Formats {
namespace {

using namespace std::chrono;

Timestamp at(year_month_day day, Seconds time = Seconds{0}) { return sys_days(day) + time; }

constexpr Seconds noon{12 * 3600};

TEST(RelativeDay, TodayAndYesterdayHaveNames) {
  const auto now = at(2026y / March / 2, noon);
  EXPECT_EQ(relativeDay(at(2026y / March / 2), now), "Today");
  EXPECT_EQ(relativeDay(at(2026y / March / 2, Seconds{86'399}), now), "Today");
  EXPECT_EQ(relativeDay(at(2026y / March / 1, Seconds{86'399}), now), "Yesterday");
}

TEST(RelativeDay, ADayOfThisYearHasItsWeekday) {
  EXPECT_EQ(relativeDay(at(2026y / January / 5), at(2026y / March / 2)), "Monday, Jan 5");
}

TEST(RelativeDay, ADayOfAnotherYearHasTheYear) {
  EXPECT_EQ(relativeDay(at(2025y / December / 30), at(2026y / March / 2)), "Dec 30, 2025");
}

TEST(RelativeDay, TheLastDayOfTheYearOnTheSecondOfJanuaryHasTheYear) {
  EXPECT_EQ(relativeDay(at(2025y / December / 31), at(2026y / January / 2)), "Dec 31, 2025");
}

TEST(RelativeDay, TheLastDayOfTheYearOnTheFirstOfJanuaryIsYesterday) {
  EXPECT_EQ(relativeDay(at(2025y / December / 31), at(2026y / January / 1)), "Yesterday");
}

TEST(RelativeDay, TomorrowIsADateLikeAnyOther) {
  EXPECT_EQ(relativeDay(at(2026y / March / 3), at(2026y / March / 2)), "Tuesday, Mar 3");
}

TEST(RelativeDay, MomentsBeyondTheCalendarAreHeldAtItsEnd) {
  const auto now = at(2026y / March / 2);
  EXPECT_NE(relativeDay(timestamp(1e300), now), "");
  EXPECT_NE(relativeDay(timestamp(-1e300), now), "");
  EXPECT_NE(relativeDay(timestamp(std::numeric_limits<double>::quiet_NaN()), now), "");
}

TEST(LocalDay, NeighbouringDaysHaveNeighbouringNumbers) {
  EXPECT_EQ(localDay(at(2026y / March / 2)), localDay(at(2026y / March / 1, Seconds{86'399})) + 1);
  EXPECT_EQ(localDay(timestamp(-1)), -1);
}

/// What comes out in another time zone: each thread asks for the zone when it first needs it.
template <class Work>
auto inZone(const char* name, Work work) {
  const std::unique_ptr<icu::TimeZone> former(icu::TimeZone::createDefault());
  icu::TimeZone::adoptDefault(icu::TimeZone::createTimeZone(name));
  const auto result = std::async(std::launch::async, work).get();
  icu::TimeZone::setDefault(*former);
  return result;
}

TEST(LocalDay, FollowsTheClocksOfTheZone) {
  // The clocks go forward at 01:00 UTC on March 29 and back at 01:00 UTC on October 25.
  const auto days = inZone("Europe/Berlin", [] {
    const auto dayOf = [](year_month_day day, int minutes) { return localDay(at(day, Seconds{minutes * 60.0})); };
    return std::vector<std::int64_t>{
        dayOf(2026y / March / 27, 22 * 60 + 59),   dayOf(2026y / March / 27, 23 * 60),
        dayOf(2026y / March / 29, 21 * 60 + 59),   dayOf(2026y / March / 29, 22 * 60),
        dayOf(2026y / October / 24, 21 * 60 + 59), dayOf(2026y / October / 24, 22 * 60),
        dayOf(2026y / October / 25, 22 * 60 + 59), dayOf(2026y / October / 25, 23 * 60),
        dayOf(2026y / March / 27, 22 * 60 + 59),
    };
  });
  const auto march = sys_days(2026y / March / 27).time_since_epoch().count();
  const auto october = sys_days(2026y / October / 24).time_since_epoch().count();
  EXPECT_THAT(days, ::testing::ElementsAre(march, march + 1, march + 2, march + 3, october, october + 1, october + 1,
                                           october + 2, march));
}

TEST(LocalDay, OfAZoneThatNeverChangesItsClocksIsAsRegular) {
  const auto day = inZone("Etc/GMT-5", [] { return localDay(at(2026y / March / 2, Seconds{19 * 3600.0})); });
  EXPECT_EQ(day, sys_days(2026y / March / 3).time_since_epoch().count());
}

TEST(Date, FollowsAFixedPattern) { EXPECT_EQ(date(at(2026y / March / 2), u"yyyy-MM"), "2026-03"); }

TEST(MediumDateShortTime, IsThatOfTheLocale) {
  EXPECT_EQ(mediumDateShortTime(at(2026y / March / 2, noon + Seconds{5 * 60})), "Mar 2, 2026, 12:05\u202FPM");
}

TEST(ShortTime, IsThatOfTheLocaleWithoutADate) {
  EXPECT_EQ(shortTime(at(2026y / March / 2, noon + Seconds{5 * 60 + 59})), "12:05\u202FPM");
}

TEST(ByteCount, SmallNumbersAreSpelledOut) {
  EXPECT_EQ(byteCount(0), "Zero KB");
  EXPECT_EQ(byteCount(1), "1 byte");
  EXPECT_EQ(byteCount(999), "999 bytes");
}

TEST(ByteCount, LargerUnitsHaveMoreDigits) {
  EXPECT_EQ(byteCount(1000), "1 KB");
  EXPECT_EQ(byteCount(245'678), "246 KB");
  EXPECT_EQ(byteCount(1'234'567), "1.2 MB");
  EXPECT_EQ(byteCount(2'000'000), "2 MB");
  EXPECT_EQ(byteCount(3'456'789'012), "3.46 GB");
}

TEST(ByteCount, WhatRoundsUpToTheNextUnitIsShownInIt) { EXPECT_EQ(byteCount(999'999), "1 MB"); }

TEST(ByteCount, TheLargestAndTheSmallestNumberHaveAUnitToo) {
  EXPECT_EQ(byteCount(std::numeric_limits<std::int64_t>::min()), "-9.22 EB");
  EXPECT_EQ(byteCount(std::numeric_limits<std::int64_t>::max()), "9.22 EB");
}

}  // namespace
}  // namespace Nimbrel::Formats
