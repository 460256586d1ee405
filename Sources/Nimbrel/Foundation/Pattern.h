#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// A stretch of a UTF-16 text, in code units.
struct TextRange {
  std::size_t start = 0;
  std::size_t length = 0;

  [[nodiscard]] std::size_t end() const { return start + length; }
  [[nodiscard]] bool intersects(const TextRange& other) const { return start < other.end() && other.start < end(); }
  bool operator==(const TextRange&) const = default;
};

/// A regular expression in ICU's dialect. Compile once and keep: a pattern is immutable, cheap to copy and may be used
/// from several threads at a time.
class Pattern {
 public:
  /// Absent when the expression is not valid.
  [[nodiscard]] static std::optional<Pattern> compile(std::u16string_view expression);
  /// An expression that stands in the program. One that is not valid is a mistake of ours and matches nothing.
  [[nodiscard]] static Pattern constant(std::u16string_view expression);

  /// All matches from left to right, none overlapping another. Each match has a limit of time and of memory: a line on
  /// which it is exceeded has no match from there on, and after a few such lines the rest of the text has none.
  [[nodiscard]] std::vector<TextRange> matches(std::u16string_view text) const;

  /// Whether there is a match, with the same limits; stops at the first.
  [[nodiscard]] bool isIn(std::u16string_view text) const;

 private:
  struct Compiled;
  enum class Wanted { All, First };

  explicit Pattern(std::shared_ptr<const Compiled> compiled);
  [[nodiscard]] std::vector<TextRange> find(std::u16string_view text, Wanted wanted) const;

  std::shared_ptr<const Compiled> compiled_;
};

}  // namespace Nimbrel
