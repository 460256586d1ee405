#pragma once

#include "Foundation/Timestamp.h"

#include <string>
#include <unordered_map>

namespace Nimbrel {

/// Dates further apart than this differ: file systems keep them more or less exactly.
inline constexpr Seconds dateSlack{1};

/// What the vault holds: the date of each picture by its relative path, after the reference date.
using VaultDates = std::unordered_map<std::string, Seconds>;

}  // namespace Nimbrel
