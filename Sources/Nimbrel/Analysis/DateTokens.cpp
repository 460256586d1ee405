#include "Analysis/DateTokens.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>

namespace Nimbrel {

namespace {

bool isWordPart(UChar32 character) {
  constexpr std::uint32_t marks = U_GC_MN_MASK | U_GC_MC_MASK | U_GC_ME_MASK;
  return u_isalpha(character) || (U_GET_GC_MASK(character) & marks) != 0;
}

bool isLineBreak(char16_t unit) {
  return (unit >= u'\n' && unit <= u'\r') || unit == u'\u0085' || unit == u'\u2028' || unit == u'\u2029';
}

/// Characters without a look of their own, which may stand anywhere in text of either direction.
bool isInvisible(char16_t unit) { return u_charType(unit) == U_FORMAT_CHAR; }

char16_t plainMark(char16_t unit) { return unit >= u'\u2010' && unit <= u'\u2015' ? u'-' : unit; }

class Tokenizer {
 public:
  Tokenizer(std::u16string_view text, const DateWords& words) : text_(text), words_(words) {}

  [[nodiscard]] std::vector<DateToken> run() {
    while (place_ < text_.size()) {
      const auto unit = text_[place_];
      if (isLineBreak(unit) || u_isUWhiteSpace(unit) || isInvisible(unit)) {
        startsLine_ = startsLine_ || isLineBreak(unit);
        isJoined_ = isJoined_ && isInvisible(unit);
        ++place_;
        continue;
      }
      add();
    }
    return std::move(tokens_);
  }

 private:
  [[nodiscard]] UChar32 characterAt(std::size_t place) const {
    UChar32 character = 0;
    U16_GET(text_.data(), 0, place, text_.size(), character);
    return character;
  }

  template <class Predicate>
  [[nodiscard]] std::size_t lengthOf(const Predicate& belongs) const {
    auto end = place_;
    while (end < text_.size() && belongs(characterAt(end))) end += U16_LENGTH(characterAt(end));
    return end - place_;
  }

  void add() {
    DateToken token{.isJoined = isJoined_, .startsLine = startsLine_};
    const auto first = characterAt(place_);
    std::size_t length = 0;
    if (u_isdigit(first)) {
      length = lengthOf([](UChar32 c) { return u_isdigit(c) != 0; });
      token.kind = DateToken::Kind::number;
      token.value = valueOf(text_.substr(place_, length));
    } else if (isWordPart(first)) {
      length = lengthOf(isWordPart);
      token.kind = DateToken::Kind::word;
      token.isCapital = u_isupper(first) != 0;
      token.meanings = words_.meanings(text_.substr(place_, length));
    } else {
      length = U16_LENGTH(first);
      token.mark = plainMark(text_[place_]);
    }
    token.range = {place_, length};
    tokens_.push_back(token);
    place_ += length;
    isJoined_ = true;
    startsLine_ = false;
  }

  [[nodiscard]] static int valueOf(std::u16string_view digits) {
    if (digits.size() > 9) return -1;
    int value = 0;
    // Digits beyond the first plane, two units each, are not those of dates.
    for (const auto unit : digits) {
      const int digit = u_charDigitValue(unit);
      if (digit < 0) return -1;
      value = value * 10 + digit;
    }
    return value;
  }

  std::u16string_view text_;
  const DateWords& words_;
  std::vector<DateToken> tokens_;
  std::size_t place_ = 0;
  bool isJoined_ = false;
  bool startsLine_ = true;
};

}  // namespace

const DateWord* DateToken::as(DateWord::Kind wanted) const {
  if (meanings == nullptr) return nullptr;
  const auto meaning = std::ranges::find_if(
      *meanings, [&](const DateWord& word) { return word.kind == wanted && (!word.needsCapital || isCapital); });
  return meaning == meanings->end() ? nullptr : &*meaning;
}

std::vector<DateToken> dateTokens(std::u16string_view text, const DateWords& words) {
  return Tokenizer(text, words).run();
}

}  // namespace Nimbrel
