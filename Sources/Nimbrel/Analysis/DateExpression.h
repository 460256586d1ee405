#pragma once

#include "Analysis/DateWords.h"
#include "Foundation/Timestamp.h"

#include <optional>

namespace Nimbrel {

/// A time of day as written.
struct DateTime {
  int hour = 0;  ///< 0 to 23
  int minute = 0;
  int second = 0;
  bool isWhole = false;     ///< says by itself that it is a time of day: "5 pm", "17 Uhr"
  bool isBareHour = false;  ///< nothing but a number: "at 5"
  bool hasSeconds = false;

  bool operator==(const DateTime&) const = default;
};

/// What a date in a text says, before it is known when that is.
struct DateExpression {
  enum class Turn { coming, next, last };
  struct Span {
    DateWord::Kind unit = DateWord::Kind::days;
    int count = 0;
  };

  std::optional<int> year;
  std::optional<int> month;  ///< with `day`
  std::optional<int> day;
  std::optional<int> weekday;       ///< 0 is Sunday; of no account beside a month
  Turn turn = Turn::coming;         ///< of the weekday
  std::optional<int> relativeDays;  ///< from today
  std::optional<Span> span;         ///< from now
  std::optional<int> partHour;      ///< the hour that a part of the day stands for
  std::optional<DateTime> time;
  std::optional<int> zoneMinutes;  ///< east of Greenwich; absent in the user's zone

  [[nodiscard]] bool hasDay() const { return month || weekday || relativeDays || span; }
};

/// The moment that is meant, in the user's time zone where the expression names none. A day without a time is its noon,
/// a time without a day is today's; a day without a year is the nearest to today; a weekday is the next one, today's
/// when its time is still to come. Absent when there is no such day.
[[nodiscard]] std::optional<Timestamp> momentOf(const DateExpression& expression, Timestamp now);

}  // namespace Nimbrel
