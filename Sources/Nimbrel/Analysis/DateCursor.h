#pragma once

#include "Analysis/DateTokens.h"

#include <cstddef>
#include <span>

namespace Nimbrel {

/// A place among the tokens of a text. Looks ahead on the same line only; a copy is a way back.
class DateCursor {
 public:
  /// The tokens must outlive the cursor.
  DateCursor(std::span<const DateToken> tokens, std::size_t place) : tokens_(tokens), origin_(place), place_(place) {}

  [[nodiscard]] std::size_t place() const { return place_; }
  /// The token so many ahead; null when the line ends before it.
  [[nodiscard]] const DateToken* peek(std::size_t ahead = 0) const;
  /// The meaning of that kind which the token so many ahead has; null when it has none.
  [[nodiscard]] const DateWord* word(DateWord::Kind kind, std::size_t ahead = 0) const;
  [[nodiscard]] bool isMark(char16_t mark, std::size_t ahead = 0) const;
  [[nodiscard]] bool isJoinedMark(char16_t mark, std::size_t ahead = 0) const;
  /// The token so many ahead if it is a number of so many digits.
  [[nodiscard]] const DateToken* number(std::size_t ahead, std::size_t fewestDigits, std::size_t mostDigits) const;
  [[nodiscard]] const DateToken* joinedNumber(std::size_t ahead, std::size_t fewestDigits,
                                              std::size_t mostDigits) const;

  void skip(std::size_t count = 1) { place_ += count; }
  /// Moves behind a mark or a word of that kind, if there is one.
  bool skipMark(char16_t mark);
  bool skipWord(DateWord::Kind kind);

 private:
  std::span<const DateToken> tokens_;
  std::size_t origin_;  ///< where the reading began, whose line it does not leave
  std::size_t place_;
};

/// Something read, and the place behind it.
template <class T>
struct DateRead {
  T value;
  DateCursor behind;
};

}  // namespace Nimbrel
