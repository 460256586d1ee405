#include "Foundation/Pattern.h"

#include <unicode/regex.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace Nimbrel {

namespace {

// ICU counts "ticks" of about a millisecond; a well-behaved match of a page of text takes none.
constexpr std::int32_t timeLimit = 250;
constexpr std::int32_t stackLimitBytes = 4 << 20;
// Lines of one text that may exceed the limits before the rest of it is left alone.
constexpr int mostFailures = 4;

/// Borrows the characters: the text must outlive the result.
icu::UnicodeString aliased(std::u16string_view text) {
  return {false, text.data(), static_cast<std::int32_t>(text.size())};
}

/// Appends the matches between two places until there are `most`; false when a limit was exceeded, with those before it
/// found.
bool collect(icu::RegexMatcher& matcher, std::size_t start, std::size_t end, std::size_t most,
             std::vector<TextRange>& found) {
  UErrorCode status = U_ZERO_ERROR;
  matcher.region(static_cast<std::int64_t>(start), static_cast<std::int64_t>(end), status);
  while (found.size() < most && matcher.find(status) && U_SUCCESS(status)) {
    const auto matchStart = static_cast<std::size_t>(matcher.start(status));
    const auto matchEnd = static_cast<std::size_t>(matcher.end(status));
    found.push_back({matchStart, matchEnd - matchStart});
  }
  return U_SUCCESS(status);
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

Pattern Pattern::constant(std::u16string_view expression) {
  auto pattern = compile(expression);
  return pattern ? std::move(*pattern) : Pattern(nullptr);
}

std::vector<TextRange> Pattern::matches(std::u16string_view text) const { return find(text, Wanted::All); }

bool Pattern::isIn(std::u16string_view text) const { return !find(text, Wanted::First).empty(); }

std::vector<TextRange> Pattern::find(std::u16string_view text, Wanted wanted) const {
  std::vector<TextRange> found;
  if (!compiled_) return found;
  const std::size_t most = wanted == Wanted::First ? 1 : std::numeric_limits<std::size_t>::max();
  const auto input = aliased(text);
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::RegexMatcher> matcher(compiled_->expression->matcher(input, status));
  if (U_FAILURE(status)) return found;
  matcher->setTimeLimit(timeLimit, status);
  matcher->setStackLimit(stackLimitBytes, status);
  matcher->useTransparentBounds(true);
  if (collect(*matcher, 0, text.size(), most, found)) return found;

  // One line is too much for the expression, but the others need not suffer for it.
  std::size_t start = found.empty() ? 0 : found.back().end();
  for (int failures = 0; start < text.size() && found.size() < most && failures < mostFailures;) {
    const auto end = std::min(text.find(u'\n', start), text.size() - 1) + 1;
    if (!collect(*matcher, start, end, most, found)) ++failures;
    start = end;
  }
  return found;
}

}  // namespace Nimbrel
