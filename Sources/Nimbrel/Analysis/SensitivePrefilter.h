#pragma once

#include <bitset>
#include <cstddef>
#include <string_view>

/// A cheap look that tells which expressions of the detector cannot match a text at all, so that they need not run:
/// nearly all texts hold no secret. It is exact in that direction: what it rules out has no match. Text is UTF-8; any
/// thread.
namespace Nimbrel::SensitivePrefilter {

/// The expressions by what they look for, in their order.
enum class Sought { apiKey, webToken, bearerToken, password, card, email, count };
using SoughtSet = std::bitset<static_cast<std::size_t>(Sought::count)>;

/// What the text may hold, from one pass over it.
[[nodiscard]] SoughtSet possibleIn(std::string_view text);

/// Whether a character beyond ASCII is the same as one or more ASCII letters when case does not count, as the long s is
/// an s: expressions that ignore case match it.
[[nodiscard]] bool foldsToAsciiLetters(char32_t character);

}  // namespace Nimbrel::SensitivePrefilter
