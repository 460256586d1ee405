#include "Analysis/DateCursor.h"

namespace Nimbrel {

const DateToken* DateCursor::peek(std::size_t ahead) const {
  for (std::size_t step = 0; step <= ahead; ++step) {
    const auto place = place_ + step;
    // The first token of a line is where a cursor may be set, not where it may be led from the line before.
    if (place >= tokens_.size() || (place > origin_ && tokens_[place].startsLine)) return nullptr;
  }
  return &tokens_[place_ + ahead];
}

const DateWord* DateCursor::word(DateWord::Kind kind, std::size_t ahead) const {
  const auto* token = peek(ahead);
  return token == nullptr ? nullptr : token->as(kind);
}

bool DateCursor::isMark(char16_t mark, std::size_t ahead) const {
  const auto* token = peek(ahead);
  return token != nullptr && token->isMark(mark);
}

bool DateCursor::isJoinedMark(char16_t mark, std::size_t ahead) const {
  return isMark(mark, ahead) && peek(ahead)->isJoined;
}

const DateToken* DateCursor::number(std::size_t ahead, std::size_t fewestDigits, std::size_t mostDigits) const {
  const auto* token = peek(ahead);
  const bool fits = token != nullptr && token->isNumber() && token->value >= 0 && token->digits() >= fewestDigits &&
                    token->digits() <= mostDigits;
  return fits ? token : nullptr;
}

const DateToken* DateCursor::joinedNumber(std::size_t ahead, std::size_t fewestDigits, std::size_t mostDigits) const {
  const auto* token = number(ahead, fewestDigits, mostDigits);
  return token != nullptr && token->isJoined ? token : nullptr;
}

bool DateCursor::skipMark(char16_t mark) {
  const bool is = isMark(mark);
  if (is) skip();
  return is;
}

bool DateCursor::skipWord(DateWord::Kind kind) {
  const bool is = word(kind) != nullptr;
  if (is) skip();
  return is;
}

}  // namespace Nimbrel
