#include "Foundation/Pattern.h"

#include <unicode/regex.h>

#include <utility>

namespace Nimbrel {

namespace {

// ICU counts "ticks" of about a millisecond; a well-behaved match of a page of text takes none.
constexpr std::int32_t timeLimit = 250;
constexpr std::int32_t stackLimitBytes = 4 << 20;

/// Borrows the characters: the text must outlive the result.
icu::UnicodeString aliased(std::u16string_view text) {
  return {false, text.data(), static_cast<std::int32_t>(text.size())};
}

}  // namespace

struct Pattern::Compiled {
  std::unique_ptr<icu::RegexPattern> expression;
};

Pattern::Pattern(std::shared_ptr<const Compiled> compiled) : compiled_(std::move(compiled)) {}

std::optional<Pattern> Pattern::compile(std::u16string_view expression) {
  UErrorCode status = U_ZERO_ERROR;
  UParseError position;
  std::unique_ptr<icu::RegexPattern> compiled(icu::RegexPattern::compile(aliased(expression), 0, position, status));
  if (U_FAILURE(status)) return std::nullopt;
  return Pattern(std::make_shared<const Compiled>(Compiled{std::move(compiled)}));
}

std::vector<TextRange> Pattern::matches(std::u16string_view text) const {
  std::vector<TextRange> found;
  const auto input = aliased(text);
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::RegexMatcher> matcher(compiled_->expression->matcher(input, status));
  if (U_FAILURE(status)) return found;
  matcher->setTimeLimit(timeLimit, status);
  matcher->setStackLimit(stackLimitBytes, status);
  while (matcher->find(status) && U_SUCCESS(status)) {
    const auto start = static_cast<std::size_t>(matcher->start(status));
    const auto end = static_cast<std::size_t>(matcher->end(status));
    found.push_back({start, end - start});
  }
  return found;
}

}  // namespace Nimbrel
