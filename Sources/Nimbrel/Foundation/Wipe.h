#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace Nimbrel {

/// Overwrites secret bytes where they stand, whatever the compiler thinks of that.
void wipe(std::span<char> secret);

/// Overwrites a secret where it stands and empties the text, so that no memory keeps it. Copies are not found: hand
/// secrets on by moving them, and reserve their room before, since a short text that is moved leaves its characters.
void wipe(std::string& secret);

/// Room that is too large to lie within a string itself.
inline constexpr std::size_t secretRoom = 512;

}  // namespace Nimbrel
