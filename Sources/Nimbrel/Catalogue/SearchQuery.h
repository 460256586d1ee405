#pragma once

#include <string>
#include <string_view>

namespace Nimbrel {

/// The full-text expression for what the user typed: each word, as split at blanks, becomes a quoted prefix term, so
/// that no operator is ever read out of it and no syntax error is possible. Empty when nothing but white space was
/// typed.
[[nodiscard]] std::string matchExpression(std::string_view query);

}  // namespace Nimbrel
