#pragma once

#include <string_view>

/// Cheap tests that tell which texts an expression of the detector cannot match at all, so that it need not run: nearly
/// all texts hold no secret. Each is exact in that direction: where it says no, the expression has no match. Text is
/// UTF-8; any thread.
namespace Nimbrel::SensitivePrefilter {

[[nodiscard]] bool mayHoldAPIKey(std::string_view text);
[[nodiscard]] bool mayHoldWebToken(std::string_view text);
[[nodiscard]] bool mayHoldBearerToken(std::string_view text);
[[nodiscard]] bool mayHoldPassword(std::string_view text);
[[nodiscard]] bool mayHoldCard(std::string_view text);
[[nodiscard]] bool mayHoldEmail(std::string_view text);

/// Whether a character beyond ASCII is the same as one or more ASCII letters when case does not count, as the long s is
/// an s: expressions that ignore case match it.
[[nodiscard]] bool foldsToAsciiLetters(char32_t character);

}  // namespace Nimbrel::SensitivePrefilter
