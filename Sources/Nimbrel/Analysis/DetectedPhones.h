#pragma once

#include "Analysis/DetectedFinding.h"

#include <string_view>

namespace Nimbrel::DetectedPhones {

/// Phone numbers in a text, from left to right, as they are written there. Numbers without a country code are read as
/// those of the user's region. A run of digits without any separator is one only with a country code or behind a word
/// for a phone, and no number is one behind a word like "order" or "card". Of a text with thousands of runs of digits
/// only the first ones are looked at. Any thread.
[[nodiscard]] DetectedFindings numbers(std::u16string_view text);

}  // namespace Nimbrel::DetectedPhones
