#include "Analysis/DateDays.h"

#include <chrono>

namespace Nimbrel::DateDays {

namespace {

using Kind = DateWord::Kind;
using Read = std::optional<DateRead<DateExpression>>;

constexpr int firstYear = 1000;
constexpr int lastYear = 2999;

bool isDay(std::optional<int> year, int month, int day) {
  if (month < 1 || month > 12 || day < 1 || day > 31) return false;
  // A leap year, where none is told.
  constexpr int anyYear = 2024;
  const std::chrono::year_month_day date(std::chrono::year(year.value_or(anyYear)),
                                         std::chrono::month(static_cast<unsigned>(month)),
                                         std::chrono::day(static_cast<unsigned>(day)));
  return date.ok() && (!year || (*year >= firstYear && *year <= lastYear));
}

Read dayRead(std::optional<int> year, int month, int day, const DateCursor& behind) {
  if (!isDay(year, month, day)) return std::nullopt;
  DateExpression expression;
  expression.year = year;
  expression.month = month;
  expression.day = day;
  return DateRead<DateExpression>{expression, behind};
}

/// "2026-11-21", "2026/11/21".
Read yearFirst(DateCursor cursor) {
  const auto* year = cursor.number(0, 4, 4);
  const auto* month = cursor.joinedNumber(2, 2, 2);
  const auto* day = cursor.joinedNumber(4, 2, 2);
  if (year == nullptr || month == nullptr || day == nullptr) return std::nullopt;
  const char16_t separator = cursor.peek(1)->mark;
  if (separator != u'-' && separator != u'/') return std::nullopt;
  if (!cursor.isJoinedMark(separator, 1) || !cursor.isJoinedMark(separator, 3)) return std::nullopt;
  cursor.skip(5);
  return dayRead(year->value, month->value, day->value, cursor);
}

/// The full year that two digits stand for: from 1950 on.
int fullYear(int twoDigits) { return twoDigits + (twoDigits < 50 ? 2000 : 1900); }

/// Whether three numbers with such marks between them can be a date, by the length of the year. Two digits for a year
/// are common in versions and fractions too, so there all must be as the user's language writes them.
bool isShortDate(const DateToken& first, const DateToken& second, const DateToken& year, char16_t separator,
                 const DateWords& words) {
  if (year.digits() == 4) return year.value >= 1800 && year.value <= 2199;
  if (year.digits() != 2 || !year.isJoined || separator != words.shortSeparator()) return false;
  return separator == u'/' || (first.digits() == 2 && second.digits() == 2);
}

/// "21.11.2026", "21. 11. 2026", "11/21/2026", "21-11-2026".
Read numbers(DateCursor cursor, const DateWords& words) {
  const auto* first = cursor.number(0, 1, 2);
  const auto* second = cursor.number(2, 1, 2);
  const auto* third = cursor.number(4, 2, 4);
  if (first == nullptr || second == nullptr || third == nullptr) return std::nullopt;
  const char16_t separator = cursor.peek(1)->mark;
  if (separator != u'.' && separator != u'/' && separator != u'-') return std::nullopt;
  if (!cursor.isJoinedMark(separator, 1) || !cursor.isJoinedMark(separator, 3)) return std::nullopt;
  if (separator != u'.' && (!second->isJoined || !third->isJoined)) return std::nullopt;
  if (!isShortDate(*first, *second, *third, separator, words)) return std::nullopt;

  const int year = third->digits() == 4 ? third->value : fullYear(third->value);
  cursor.skip(5);
  const bool dayFirst = separator == u'.' || words.dayComesFirst();
  auto inOrder =
      dayRead(year, dayFirst ? second->value : first->value, dayFirst ? first->value : second->value, cursor);
  if (inOrder || separator == u'.') return inOrder;
  // What is no date in the user's order is one in the other.
  return dayRead(year, dayFirst ? first->value : second->value, dayFirst ? second->value : first->value, cursor);
}

/// The year behind a day, where there is one; a comma in front of it belongs to it.
std::optional<int> year(DateCursor& cursor) {
  const std::size_t ahead = cursor.isMark(u',') ? 1 : 0;
  const auto* token = cursor.number(ahead, 4, 4);
  if (token == nullptr || token->value < firstYear || token->value > lastYear) return std::nullopt;
  // An amount or a time of day: "2026.50", "2026:00".
  const auto* behind = cursor.peek(ahead + 1);
  const bool goesOn = behind != nullptr && behind->isJoined && cursor.joinedNumber(ahead + 2, 1, 9) != nullptr;
  if (goesOn && (behind->mark == u'.' || behind->mark == u':')) return std::nullopt;
  cursor.skip(ahead + 1);
  return token->value;
}

void skipOrdinal(DateCursor& cursor) {
  const auto* behind = cursor.peek();
  if (behind == nullptr || !behind->isJoined) return;
  if (behind->isMark(u'.') || cursor.word(Kind::ordinal) != nullptr) cursor.skip();
}

/// The full stop of an abbreviation, unless it ends the sentence or the line.
void skipAbbreviation(DateCursor& cursor) {
  if (cursor.isJoinedMark(u'.') && cursor.peek(1) != nullptr && cursor.peek(1)->isNumber()) cursor.skip();
}

/// "21 November 2026", "21st of November", "21. Nov. 2026".
Read dayAndMonth(DateCursor cursor) {
  const auto* day = cursor.number(0, 1, 2);
  if (day == nullptr) return std::nullopt;
  cursor.skip();
  skipOrdinal(cursor);
  if (cursor.isMark(u'-') && cursor.word(Kind::month, 1) != nullptr) cursor.skip();
  cursor.skipWord(Kind::of);
  const auto* month = cursor.word(Kind::month);
  if (month == nullptr) return std::nullopt;
  cursor.skip();
  auto end = cursor;
  skipAbbreviation(cursor);
  if (cursor.isJoinedMark(u'-') && cursor.joinedNumber(1, 4, 4) != nullptr) cursor.skip();
  cursor.skipWord(Kind::of);
  const auto ofYear = year(cursor);
  return dayRead(ofYear, month->value, day->value, ofYear ? cursor : end);
}

/// "November 21st, 2026", "Nov. 21".
Read monthAndDay(DateCursor cursor) {
  const auto* month = cursor.word(Kind::month);
  if (month == nullptr) return std::nullopt;
  cursor.skip();
  skipAbbreviation(cursor);
  cursor.skipWord(Kind::of);
  const auto* day = cursor.number(0, 1, 2);
  if (day == nullptr || day->isJoined) return std::nullopt;
  cursor.skip();
  if (cursor.word(Kind::ordinal) != nullptr && cursor.peek()->isJoined) cursor.skip();
  const auto ofYear = year(cursor);
  return dayRead(ofYear, month->value, day->value, cursor);
}

Read weekday(DateCursor cursor) {
  DateExpression expression;
  if (cursor.skipWord(Kind::next)) {
    expression.turn = DateExpression::Turn::next;
  } else if (cursor.skipWord(Kind::last)) {
    expression.turn = DateExpression::Turn::last;
  } else {
    cursor.skipWord(Kind::coming);
  }
  const auto* word = cursor.word(Kind::weekday);
  if (word == nullptr) return std::nullopt;
  expression.weekday = word->value;
  cursor.skip();
  return DateRead<DateExpression>{expression, cursor};
}

Read relativeDay(DateCursor cursor) {
  DateExpression expression;
  expression.relativeDays = 0;
  if (const auto* day = cursor.word(Kind::relativeDay)) {
    expression.relativeDays = day->value;
  } else if (const auto* evening = cursor.word(Kind::dayWithPart)) {
    expression.partHour = evening->value;
  } else if (cursor.word(Kind::coming) != nullptr && cursor.word(Kind::dayPart, 1) != nullptr) {
    expression.partHour = cursor.word(Kind::dayPart, 1)->value;
    cursor.skip();
  } else {
    return std::nullopt;
  }
  cursor.skip();
  return DateRead<DateExpression>{expression, cursor};
}

Read span(DateCursor cursor) {
  if (!cursor.skipWord(Kind::within)) return std::nullopt;
  DateExpression::Span span;
  if (const auto* number = cursor.number(0, 1, 3)) {
    span.count = number->value;
  } else if (const auto* word = cursor.word(Kind::number)) {
    span.count = word->value;
  } else {
    return std::nullopt;
  }
  cursor.skip();
  for (const auto unit : {Kind::minutes, Kind::hours, Kind::days, Kind::weeks, Kind::months}) {
    if (cursor.word(unit) == nullptr) continue;
    span.unit = unit;
    cursor.skip();
    DateExpression expression;
    expression.span = span;
    return DateRead<DateExpression>{expression, cursor};
  }
  return std::nullopt;
}

}  // namespace

Read calendarDate(const DateCursor& from, const DateWords& words) {
  if (const auto* number = from.number(0, 1, 4)) {
    if (auto date = yearFirst(from)) return date;
    if (auto date = numbers(from, words)) return date;
    return number->digits() <= 2 ? dayAndMonth(from) : std::nullopt;
  }
  return monthAndDay(from);
}

Read dayAndMonthNumbers(const DateCursor& from) {
  const auto* day = from.number(0, 1, 2);
  const auto* month = from.joinedNumber(2, 1, 2);
  if (day == nullptr || month == nullptr || !from.isJoinedMark(u'.', 1) || !from.isJoinedMark(u'.', 3)) {
    return std::nullopt;
  }
  auto behind = from;
  behind.skip(4);
  return dayRead(std::nullopt, month->value, day->value, behind);
}

Read namedDay(const DateCursor& from) {
  if (auto day = weekday(from)) return day;
  if (auto day = relativeDay(from)) return day;
  return span(from);
}

}  // namespace Nimbrel::DateDays
