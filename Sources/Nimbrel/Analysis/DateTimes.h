#pragma once

#include "Analysis/DateCursor.h"
#include "Analysis/DateExpression.h"

#include <optional>

/// Reads times of day out of the tokens of a text.
namespace Nimbrel::DateTimes {

/// A time of day: "17:00", "5 pm", "5:30 p.m.", "17 Uhr", "17.30 Uhr", "noon", "14:05:33.123"; a lone number too, with
/// `isBareHour`. Nothing when the numbers go on otherwise, as in "14:05:33:12" or "10:30.5.png".
[[nodiscard]] std::optional<DateRead<DateTime>> time(const DateCursor& from, const DateWords& words);

/// What a zone stands behind.
enum class Precise {
  No,  ///< a time for people: "-15:30" may as well be its end, and "+1" anything
  Yes  ///< a time with seconds or of ISO 8601
};

/// The zone behind a time, in minutes east of Greenwich: "Z", "UTC", "PST", "+01:00", "UTC+2".
[[nodiscard]] std::optional<DateRead<int>> zone(const DateCursor& from, Precise precise);

}  // namespace Nimbrel::DateTimes
