#pragma once

#include "Analysis/DetectedFinding.h"

#include <string_view>

namespace Nimbrel::DetectedAddresses {

/// Postal addresses in a text as English and German write them, from left to right: a street with a house number, and
/// where they follow, also on the next line, the unit, the town, the state, the postcode and the country. A street
/// whose name ends in a word of everyday use ("Drive", "Weg") is an address only with a postcode or a state. Each is
/// opened with the map service at `mapBase`. Any thread.
[[nodiscard]] DetectedFindings addresses(std::u16string_view text, std::string_view mapBase);

}  // namespace Nimbrel::DetectedAddresses
