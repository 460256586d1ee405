#pragma once

#include "Analysis/DateWords.h"
#include "Foundation/Pattern.h"

#include <optional>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// A word, a number or a single other character of a text, as the reader of dates sees it.
struct DateToken {
  enum class Kind { word, number, mark };

  Kind kind = Kind::mark;
  TextRange range;
  int value = -1;                                   ///< of a number of at most nine digits
  char16_t mark = 0;                                ///< of a mark; dashes are hyphens
  bool isCapital = false;                           ///< of a word: its first letter is
  bool isJoined = false;                            ///< nothing stands between it and the token before
  bool startsLine = false;                          ///< a line break stands between them
  const std::vector<DateWord>* meanings = nullptr;  ///< of a word, borrowed; null where it has none

  [[nodiscard]] bool isNumber() const { return kind == Kind::number; }
  [[nodiscard]] bool isMark(char16_t character) const { return kind == Kind::mark && mark == character; }
  /// How many digits a number has.
  [[nodiscard]] std::size_t digits() const { return range.length; }
  /// The meaning of that kind, if the word has one.
  [[nodiscard]] const DateWord* as(DateWord::Kind wanted) const;
};

/// All tokens of a text from left to right. The words must outlive them.
[[nodiscard]] std::vector<DateToken> dateTokens(std::u16string_view text, const DateWords& words);

}  // namespace Nimbrel
