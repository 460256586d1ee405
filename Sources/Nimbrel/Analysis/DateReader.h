#pragma once

#include "Analysis/DateExpression.h"
#include "Analysis/DateTokens.h"

#include <cstddef>
#include <optional>
#include <span>

namespace Nimbrel {

/// A date among the tokens of a text.
struct FoundDate {
  DateExpression expression;
  std::size_t end = 0;  ///< the number of the first token behind it
};

/// The longest date that begins with the token of that number; absent when none does. `formerEnd` is the number of the
/// first token behind the date before. Decides what is written there, not when that is.
[[nodiscard]] std::optional<FoundDate> readDate(std::span<const DateToken> tokens, const DateWords& words,
                                                std::size_t first, std::size_t formerEnd);

}  // namespace Nimbrel
