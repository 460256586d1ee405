#pragma once

#include "Analysis/DateCursor.h"
#include "Analysis/DateExpression.h"

#include <optional>

/// Reads days out of the tokens of a text. Nothing when no day begins at the cursor, or one that no calendar has.
namespace Nimbrel::DateDays {

/// A day of a month, with or without a year: "2026-11-21", "21.11.2026", "11/21/2026" in the order that the user's
/// language has, "21 November 2026", "Nov 21".
[[nodiscard]] std::optional<DateRead<DateExpression>> calendarDate(const DateCursor& from, const DateWords& words);

/// A day and a month in numbers alone, "21.11.": a date only behind a weekday.
[[nodiscard]] std::optional<DateRead<DateExpression>> dayAndMonthNumbers(const DateCursor& from);

/// A weekday, a relative day, or a span of time from now: "next Monday", "tomorrow", "tonight", "in 3 days".
[[nodiscard]] std::optional<DateRead<DateExpression>> namedDay(const DateCursor& from);

}  // namespace Nimbrel::DateDays
