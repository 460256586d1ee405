#include "Analysis/DateTimes.h"

namespace Nimbrel::DateTimes {

namespace {

using Kind = DateWord::Kind;

constexpr int noon = 12;

/// What follows the hour, and the place behind all of it.
struct Draft {
  DateTime time;
  DateCursor cursor;
};

/// The number of minutes or seconds behind a mark; absent when there is none.
std::optional<int> sixtieth(const DateCursor& cursor, char16_t mark) {
  const auto* number = cursor.joinedNumber(1, 2, 2);
  if (!cursor.isJoinedMark(mark) || number == nullptr || number->value > 59) return std::nullopt;
  return number->value;
}

/// ":30", ":30:15", ":30:15.123".
Draft withMinutes(Draft draft) {
  const auto minute = sixtieth(draft.cursor, u':');
  if (!minute) return draft;
  draft.time.minute = *minute;
  draft.time.isBareHour = false;
  draft.cursor.skip(2);
  const auto second = sixtieth(draft.cursor, u':');
  if (!second) return draft;
  draft.time.second = *second;
  draft.time.hasSeconds = true;
  draft.cursor.skip(2);
  const bool hasFraction = draft.cursor.isJoinedMark(u'.') || draft.cursor.isJoinedMark(u',');
  if (hasFraction && draft.cursor.joinedNumber(1, 1, 9) != nullptr) draft.cursor.skip(2);
  return draft;
}

/// "pm", "p.m.": the place behind it and what it adds to the hour.
std::optional<DateRead<int>> meridiem(DateCursor cursor, const DateWords& words) {
  const auto* token = cursor.peek();
  if (const auto* word = cursor.word(Kind::meridiem)) {
    // Where "am" is a word of the language too it tells the morning only when attached.
    if (words.amIsAWord() && word->value == 0 && !token->isJoined && !token->isCapital) return std::nullopt;
    cursor.skip();
    return DateRead<int>{word->value, cursor};
  }
  const auto* letter = cursor.word(Kind::meridiemLetter);
  if (letter == nullptr || !cursor.isJoinedMark(u'.', 1)) return std::nullopt;
  const auto* second = cursor.word(Kind::meridiemEnd, 2);
  if (second == nullptr || !cursor.peek(2)->isJoined) return std::nullopt;
  cursor.skip(3);
  if (cursor.isJoinedMark(u'.')) cursor.skip();
  return DateRead<int>{letter->value, cursor};
}

/// The draft with the half of the day that follows; absent when the hour has none.
std::optional<Draft> withMeridiem(Draft draft, const DateWords& words) {
  // "5.30 pm"
  const auto minute = draft.time.isBareHour ? sixtieth(draft.cursor, u'.') : std::nullopt;
  if (minute) draft.cursor.skip(2);
  const auto half = meridiem(draft.cursor, words);
  if (!half || draft.time.hour < 1 || draft.time.hour > noon) return std::nullopt;
  draft.time.minute = minute.value_or(draft.time.minute);
  draft.time.hour = draft.time.hour % noon + half->value;
  draft.time.isWhole = true;
  draft.time.isBareHour = false;
  draft.cursor = half->behind;
  return draft;
}

/// The minutes behind the word for an hour: "17 Uhr 30", "14h30".
std::optional<int> minutesBehindHour(const DateCursor& cursor) {
  const auto* number = cursor.number(0, 2, 2);
  const auto* behind = cursor.peek(1);
  const bool goesOn = behind != nullptr && behind->isJoined && behind->kind != DateToken::Kind::mark;
  return number != nullptr && number->value < 60 && !goesOn ? std::optional(number->value) : std::nullopt;
}

/// The draft with the word for an hour that follows: "17 Uhr", "17.30 Uhr".
std::optional<Draft> withHourWord(Draft draft) {
  auto minute = draft.time.isBareHour ? sixtieth(draft.cursor, u'.') : std::nullopt;
  if (minute) draft.cursor.skip(2);
  const auto* word = draft.cursor.word(Kind::hour);
  if (word == nullptr) return std::nullopt;
  draft.cursor.skip();
  if (draft.time.isBareHour && !minute) {
    minute = minutesBehindHour(draft.cursor);
    if (minute) draft.cursor.skip();
  }
  draft.time.minute = minute.value_or(draft.time.minute);
  draft.time.isWhole = word->value != 0;
  draft.time.isBareHour = draft.time.isBareHour && !draft.time.isWhole && !minute;
  return draft;
}

/// Whether more numbers follow, so that this is no time.
bool goesOn(const DateCursor& cursor) {
  const bool hasMark =
      cursor.isJoinedMark(u':') || cursor.isJoinedMark(u'.') || cursor.isJoinedMark(u',') || cursor.isJoinedMark(u'/');
  return hasMark && cursor.joinedNumber(1, 1, 30) != nullptr;
}

std::optional<DateRead<DateTime>> clockWord(DateCursor cursor) {
  const auto* word = cursor.word(Kind::clock);
  if (word == nullptr) return std::nullopt;
  cursor.skip();
  DateTime time;
  time.hour = word->value;
  time.isWhole = true;
  return DateRead<DateTime>{time, cursor};
}

/// "+01:00", "-0500", "+2".
std::optional<DateRead<int>> offset(DateCursor cursor) {
  const bool isWest = cursor.isMark(u'-');
  if (!isWest && !cursor.isMark(u'+')) return std::nullopt;
  const auto* number = cursor.joinedNumber(1, 1, 4);
  if (number == nullptr || number->digits() == 3) return std::nullopt;
  cursor.skip(2);
  int minutes = number->digits() == 4 ? number->value / 100 * 60 + number->value % 100 : number->value * 60;
  if (number->digits() == 2) {
    const auto rest = sixtieth(cursor, u':');
    minutes += rest.value_or(0);
    if (rest) cursor.skip(2);
  }
  constexpr int farthest = 14 * 60;
  if (minutes > farthest) return std::nullopt;
  return DateRead<int>{isWest ? -minutes : minutes, cursor};
}

}  // namespace

std::optional<DateRead<DateTime>> time(const DateCursor& from, const DateWords& words) {
  if (auto word = clockWord(from)) return word;
  const auto* hour = from.number(0, 1, 2);
  if (hour == nullptr || hour->value > 23) return std::nullopt;
  Draft draft{{.hour = hour->value, .isBareHour = true}, from};
  draft.cursor.skip();
  draft = withMinutes(draft);
  if (const auto half = withMeridiem(draft, words)) {
    draft = *half;
  } else if (const auto word = withHourWord(draft)) {
    draft = *word;
  }
  if (goesOn(draft.cursor)) return std::nullopt;
  return DateRead<DateTime>{draft.time, draft.cursor};
}

std::optional<DateRead<int>> zone(const DateCursor& from, Precise precise) {
  if (const auto* word = from.word(Kind::zone); word != nullptr && from.peek()->isCapital) {
    auto cursor = from;
    cursor.skip();
    const bool isJoined = cursor.peek() != nullptr && cursor.peek()->isJoined;
    const auto more = word->value == 0 && isJoined ? offset(cursor) : std::nullopt;
    return more ? more : DateRead<int>{word->value, cursor};
  }
  const auto* sign = from.peek();
  if (sign == nullptr || from.joinedNumber(1, 2, 4) == nullptr) return std::nullopt;
  if (precise == Precise::No && (!sign->isJoined || sign->isMark(u'-'))) return std::nullopt;
  return offset(from);
}

}  // namespace Nimbrel::DateTimes
