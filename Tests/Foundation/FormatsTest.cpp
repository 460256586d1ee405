#include "Foundation/Formats.h"

#include <gtest/gtest.h>

#include <limits>

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

TEST(Date, FollowsAFixedPattern) { EXPECT_EQ(date(at(2026y / March / 2), u"yyyy-MM"), "2026-03"); }

TEST(MediumDateShortTime, IsThatOfTheLocale) {
  EXPECT_EQ(mediumDateShortTime(at(2026y / March / 2, noon + Seconds{5 * 60})), "Mar 2, 2026, 12:05\u202FPM");
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
