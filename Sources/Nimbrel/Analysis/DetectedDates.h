#pragma once

#include "Analysis/DetectedFinding.h"

#include <string_view>

namespace Nimbrel::DetectedDates {

/// Dates in a text, from left to right, in English and in the language that dates are in for the user: days with or
/// without a time, relative days, and times that say that they are some. Each has the moment that it means, seen from
/// `now`. Any thread.
[[nodiscard]] DetectedFindings dates(std::u16string_view text, Timestamp now);

}  // namespace Nimbrel::DetectedDates
