#include "Analysis/DetectedTesting.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>

namespace Nimbrel {
namespace {

using namespace std::chrono;
using ::testing::IsEmpty;
using Testing::saturdayMorning;
using Testing::Strings;
using Testing::TimeZoneIs;
using Testing::UserLocaleIs;

/// A moment as "2026-11-21 14:05:33" in UTC.
std::string utc(Timestamp moment) {
  const auto second = floor<seconds>(moment);
  const year_month_day day(floor<days>(second));
  const hh_mm_ss time(second - floor<days>(second));
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(day.year()),
                static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
                static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count()));
  return text.data();
}

/// The dates of a text as written and as understood: "today = 2026-11-21 12:00:00".
Strings datesIn(std::string_view text, Timestamp now = saturdayMorning) {
  Strings dates;
  for (const auto& item : Detected::items(text, now)) {
    if (item.kind == DetectedItem::Kind::date) dates.push_back(item.text + " = " + utc(item.date.value()));
  }
  return dates;
}

struct Case {
  std::string text;  ///< as found, all of it
  const char* moment;
};

void expectDates(const std::vector<Case>& cases, Timestamp now = saturdayMorning) {
  for (const auto& [text, moment] : cases) {
    EXPECT_EQ(datesIn("xx " + text + " xx", now), Strings{text + " = " + moment});
    EXPECT_EQ(datesIn(text, now), Strings{text + " = " + moment});
  }
}

void expectNone(const std::vector<const char*>& texts) {
  for (const char* text : texts) EXPECT_THAT(datesIn(text), IsEmpty()) << text;
}

TEST(DetectedDates, OfNumbers) {
  expectDates({{"2026-11-21", "2026-11-21 12:00:00"},
               {"2026/11/21", "2026-11-21 12:00:00"},
               {"21.11.2026", "2026-11-21 12:00:00"},
               {"1.2.2026", "2026-02-01 12:00:00"},
               {"21. 11. 2026", "2026-11-21 12:00:00"},
               {"11/21/2026", "2026-11-21 12:00:00"},
               {"21/11/2026", "2026-11-21 12:00:00"},
               {"4/5/2026", "2026-04-05 12:00:00"},
               {"11/21/26", "2026-11-21 12:00:00"},
               {"11-21-2026", "2026-11-21 12:00:00"},
               {"2026-11-21 14:05", "2026-11-21 14:05:00"},
               {"2026-11-21 14:05:33", "2026-11-21 14:05:33"},
               {"11/21/2026, 5:30 PM", "2026-11-21 17:30:00"}});
}

TEST(DetectedDates, OfIso8601HaveTheirZone) {
  expectDates({{"2026-11-21T14:05", "2026-11-21 14:05:00"},
               {"2026-11-21T14:05:33Z", "2026-11-21 14:05:33"},
               {"2026-11-21T14:05:33.123Z", "2026-11-21 14:05:33"},
               {"2026-11-21T14:05:33+01:00", "2026-11-21 13:05:33"},
               {"2026-11-21T14:05:33-0500", "2026-11-21 19:05:33"},
               {"2026-11-21T14:05-05:00", "2026-11-21 19:05:00"},
               {"2026-11-21 14:05:33 +0100", "2026-11-21 13:05:33"}});
}

TEST(DetectedDates, WithNamedMonths) {
  expectDates({{"21 November 2026", "2026-11-21 12:00:00"},
               {"21st of November, 2026", "2026-11-21 12:00:00"},
               {"Nov 21, 2026", "2026-11-21 12:00:00"},
               {"Nov. 21, 2026", "2026-11-21 12:00:00"},
               {"NOVEMBER 21 2026", "2026-11-21 12:00:00"},
               {"Sept 3, 2025", "2025-09-03 12:00:00"},
               {"14 July 1789", "1789-07-14 12:00:00"},
               {"21-Nov-2026", "2026-11-21 12:00:00"},
               {"29 February 2028", "2028-02-29 12:00:00"},
               {"Saturday, November 21, 2026", "2026-11-21 12:00:00"},
               {"Sat, 21 Nov 2026 17:05:00 +0100", "2026-11-21 16:05:00"},
               {"Sat Nov 21 17:05:00 2026", "2026-11-21 17:05:00"}});
}

TEST(DetectedDates, WithATimeBehindThem) {
  expectDates({{"November 21, 2026 at 5 pm", "2026-11-21 17:00:00"},
               {"Nov 21, 2026 at 5:30 p.m.", "2026-11-21 17:30:00"},
               {"Nov 21, 2026, 12 am", "2026-11-21 00:00:00"},
               {"Nov 21, 2026 12 pm", "2026-11-21 12:00:00"},
               {"21 November 2026 17:00", "2026-11-21 17:00:00"},
               {"21 November 2026 · 17:00", "2026-11-21 17:00:00"},
               {"21 November 2026 at noon", "2026-11-21 12:00:00"},
               {"21 November 2026 17:00 CET", "2026-11-21 16:00:00"},
               {"21 November 2026 5 pm PST", "2026-11-22 01:00:00"},
               {"21 November 2026 17:00 UTC+2", "2026-11-21 15:00:00"},
               {"5 pm on November 21, 2026", "2026-11-21 17:00:00"},
               {"17:00, 21 November 2026", "2026-11-21 17:00:00"}});
}

TEST(DetectedDates, WithoutAYearAreTheNearest) {
  expectDates({{"November 21st", "2026-11-21 12:00:00"},
               {"Jan 5", "2027-01-05 12:00:00"},
               {"5 December at 8 am", "2026-12-05 08:00:00"},
               {"May 30", "2026-05-30 12:00:00"}});
  expectDates({{"Nov 21", "2025-11-21 12:00:00"}}, sys_days(2026y / 1 / 10));
  expectDates({{"Feb 29", "2028-02-29 12:00:00"}}, sys_days(2027y / 12 / 10));
}

TEST(DetectedDates, OfWeekdaysAreTheNext) {
  expectDates({{"Friday 14:00", "2026-11-27 14:00:00"},
               {"Friday", "2026-11-27 12:00:00"},
               {"Fri 14:00", "2026-11-27 14:00:00"},
               {"Saturday 14:00", "2026-11-21 14:00:00"},
               {"Saturday 9:00", "2026-11-28 09:00:00"},
               {"Saturday", "2026-11-21 12:00:00"},
               {"next Monday", "2026-11-23 12:00:00"},
               {"next Saturday", "2026-11-28 12:00:00"},
               {"this Sunday at 5", "2026-11-22 17:00:00"},
               {"last Friday", "2026-11-20 12:00:00"},
               {"last Saturday", "2026-11-14 12:00:00"},
               {"Monday morning", "2026-11-23 09:00:00"},
               {"5pm on Friday", "2026-11-27 17:00:00"}});
}

TEST(DetectedDates, RelativeToNow) {
  expectDates({{"today", "2026-11-21 12:00:00"},
               {"Tomorrow", "2026-11-22 12:00:00"},
               {"tomorrow at 5 pm", "2026-11-22 17:00:00"},
               {"tomorrow at 5", "2026-11-22 17:00:00"},
               {"tomorrow at 9", "2026-11-22 09:00:00"},
               {"tomorrow 17:00", "2026-11-22 17:00:00"},
               {"tomorrow morning", "2026-11-22 09:00:00"},
               {"tomorrow evening at 8", "2026-11-22 20:00:00"},
               {"yesterday", "2026-11-20 12:00:00"},
               {"tonight", "2026-11-21 20:00:00"},
               {"tonight at 8", "2026-11-21 20:00:00"},
               {"this afternoon", "2026-11-21 15:00:00"},
               {"in 3 days", "2026-11-24 12:00:00"},
               {"in two hours", "2026-11-21 12:00:00"},
               {"in 45 minutes", "2026-11-21 10:45:00"},
               {"in a week", "2026-11-28 12:00:00"},
               {"in 2 weeks at 14:00", "2026-12-05 14:00:00"},
               {"5 pm tomorrow", "2026-11-22 17:00:00"}});
  expectDates({{"in 1 month", "2027-02-28 12:00:00"}}, sys_days(2027y / 1 / 31));
}

TEST(DetectedDates, ATimeThatSaysThatItIsOneIsTodays) {
  expectDates({{"at 5 pm", "2026-11-21 17:00:00"},
               {"5 pm", "2026-11-21 17:00:00"},
               {"5:30PM", "2026-11-21 17:30:00"},
               {"at 14:00", "2026-11-21 14:00:00"},
               {"9 a.m.", "2026-11-21 09:00:00"}});
  expectNone({"14:00", "14:00:33", "at 5", "5", "00:03:12", "at 00:03:12", "3:45"});
}

TEST(DetectedDates, OneOfASpanIsEnoughToFindBoth) {
  EXPECT_EQ(datesIn("Friday 14:00-15:30"), Strings{"Friday 14:00 = 2026-11-27 14:00:00"});
  EXPECT_EQ(datesIn("21.11.2026–25.11.2026"),
            (Strings{"21.11.2026 = 2026-11-21 12:00:00", "25.11.2026 = 2026-11-25 12:00:00"}));
}

TEST(DetectedDates, DaysThatNoCalendarHasAreNone) {
  expectNone({"31 February 2026", "February 31, 2026", "2026-02-31", "31.02.2026", "2026-13-01", "13/13/2026",
              "29 February 2026", "0 May 2026", "2026-00-10", "32.01.2026", "Feb 30", "31 February 12"});
}

TEST(DetectedDates, WhatOnlyLooksLikeOneIsNone) {
  expectNone({"v21.11.2026",
              "1.2.3",
              "21.11.26",
              "10.12.14.16",
              "10.11.2026.5",
              "1/2",
              "3/4/5",
              "24/7/365",
              "16:9",
              "backup-2026-11-21.tar.gz",
              "2026-11-21.log",
              "978-3-16-148410-0",
              "550e8400-2026-11-21-abc",
              "may 5 people",
              "march 5 miles",
              "mar 3",
              "sat 3",
              "Sun",
              "Mon",
              "Sat",
              "May",
              "November",
              "May 2026",
              "March 5,000",
              "May 5.5",
              "today()",
              "today's",
              "tomorrow.txt",
              "date.today",
              "#tomorrow",
              "$5 pm",
              "13 pm",
              "0 pm",
              "25:00",
              "at 24:00",
              "at 14:60",
              "May 32",
              "10 PM2.5",
              "finished in 2 hours",
              "Built in 3 minutes",
              "in 5 seconds",
              "in 2",
              "next",
              "last",
              "at",
              "in days",
              "2026",
              "11/2026",
              "555-12-2026",
              "1234567890",
              "20261121",
              "20261121_140533"});
}

TEST(DetectedDates, ATimeThatGoesOnOtherwiseIsLeftOut) {
  EXPECT_EQ(datesIn("Screenshot 2026-11-21 at 14.05.33.png"), Strings{"2026-11-21 = 2026-11-21 12:00:00"});
  EXPECT_EQ(datesIn("2026-11-21\n14:00"), Strings{"2026-11-21 = 2026-11-21 12:00:00"});
}

TEST(DetectedDates, OfTheUsersLanguage) {
  const UserLocaleIs german("de_DE.UTF-8");
  expectDates({{"21. November 2026", "2026-11-21 12:00:00"},
               {"3. März 2026", "2026-03-03 12:00:00"},
               {"Samstag, 21. November 2026 um 17 Uhr", "2026-11-21 17:00:00"},
               {"Sa. 21.11. 14 Uhr", "2026-11-21 14:00:00"},
               {"21.11.26", "2026-11-21 12:00:00"},
               {"4/5/2026", "2026-05-04 12:00:00"},
               {"Fr 14:00", "2026-11-27 14:00:00"},
               {"Freitag 17.30 Uhr", "2026-11-27 17:30:00"},
               {"heute", "2026-11-21 12:00:00"},
               {"heute Abend", "2026-11-21 19:00:00"},
               {"heute Abend um 8", "2026-11-21 20:00:00"},
               {"morgen", "2026-11-22 12:00:00"},
               {"morgen um 17:30 Uhr", "2026-11-22 17:30:00"},
               {"morgen früh", "2026-11-22 08:00:00"},
               {"Morgen um 9 Uhr", "2026-11-22 09:00:00"},
               {"übermorgen", "2026-11-23 12:00:00"},
               {"gestern", "2026-11-20 12:00:00"},
               {"vorgestern", "2026-11-19 12:00:00"},
               {"nächsten Montag", "2026-11-23 12:00:00"},
               {"in 3 Tagen", "2026-11-24 12:00:00"},
               {"in zwei Stunden", "2026-11-21 12:00:00"},
               {"17 Uhr", "2026-11-21 17:00:00"},
               {"um 14:00", "2026-11-21 14:00:00"},
               {"tomorrow at 5 pm", "2026-11-22 17:00:00"}});
  expectNone({"Guten Morgen", "So geht das", "Do it", "am Morgen", "Seite 5 am Ende", "Di", "um 5", "Mai"});
}

TEST(DetectedDates, OfOtherLanguagesHaveTheNamesOfTheLocale) {
  const UserLocaleIs french("fr_FR.UTF-8");
  expectDates({{"samedi 21 novembre 2026", "2026-11-21 12:00:00"},
               {"1er mars 2026 à 14h30", "2026-03-01 14:30:00"},
               {"demain", "2026-11-22 12:00:00"},
               {"hier", "2026-11-20 12:00:00"},
               {"04/05/2026", "2026-05-04 12:00:00"}});
  const UserLocaleIs spanish("es_ES.UTF-8");
  expectDates({{"21 de noviembre de 2026", "2026-11-21 12:00:00"}, {"ayer", "2026-11-20 12:00:00"}});
}

TEST(DetectedDates, AreInTheUsersTimeZone) {
  const TimeZoneIs berlin("Europe/Berlin");
  expectDates({{"2026-11-21", "2026-11-21 11:00:00"},
               {"2026-07-21", "2026-07-21 10:00:00"},
               {"2026-07-21T14:05:33Z", "2026-07-21 14:05:33"},
               {"21 July 2026 17:00", "2026-07-21 15:00:00"}});
}

TEST(DetectedDates, TheDayOfNowIsThatOfTheUsersTimeZone) {
  const TimeZoneIs auckland("Pacific/Auckland");
  // There it is Sunday, 01:00.
  expectDates({{"today", "2026-11-21 23:00:00"}, {"Sunday", "2026-11-21 23:00:00"}},
              sys_days(2026y / 11 / 21) + hours(12));
}

TEST(DetectedDates, KeepTheTimeOfDayAcrossAChangeOfTheClocks) {
  const TimeZoneIs berlin("Europe/Berlin");
  const Timestamp dayBefore = sys_days(2026y / 3 / 28) + hours(9);
  expectDates({{"today at 5 pm", "2026-03-28 16:00:00"},
               {"tomorrow at 5 pm", "2026-03-29 15:00:00"},
               {"tomorrow", "2026-03-29 10:00:00"},
               {"in 2 days", "2026-03-30 10:00:00"},
               {"in 48 hours", "2026-03-30 09:00:00"}},
              dayBefore);
}

TEST(DetectedDates, ATimeThatTheClocksSkipIsCountedOn) {
  const TimeZoneIs berlin("Europe/Berlin");
  expectDates({{"29 March 2026 02:30", "2026-03-29 01:30:00"}});
}

}  // namespace
}  // namespace Nimbrel
