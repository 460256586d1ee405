#include "Analysis/DateReader.h"

#include "Analysis/DateCursor.h"
#include "Analysis/DateDays.h"
#include "Analysis/DateTimes.h"

#include <string_view>

namespace Nimbrel {

namespace {

using Kind = DateWord::Kind;
using Read = std::optional<DateRead<DateExpression>>;

bool contains(std::u16string_view marks, const DateToken& token) {
  return token.kind == DateToken::Kind::mark && marks.find(token.mark) != std::u16string_view::npos;
}

/// Whether what stands in front of a token lets a date begin there.
bool mayBegin(std::span<const DateToken> tokens, std::size_t first, std::size_t formerEnd) {
  const auto& token = tokens[first];
  if (first == 0 || !token.isJoined) return true;
  const auto& before = tokens[first - 1];
  if (before.kind != DateToken::Kind::mark) return false;
  // "14:00–15:00" and the like: the end of a span of which the beginning is a date.
  if (before.isMark(u'-')) return formerEnd == first - 1;
  if (contains(u"._/\\#$€£¥%@&=+~^*<[{'’`", before)) return false;
  const bool isInner = contains(u":,", before) && first > 1 && before.isJoined;
  return !isInner || tokens[first - 2].kind == DateToken::Kind::word;
}

/// Whether what stands behind lets a date end there.
bool mayEnd(const DateCursor& behind) {
  const auto* next = behind.peek();
  if (next == nullptr || !next->isJoined) return true;
  if (next->kind != DateToken::Kind::mark) return false;
  if (contains(u"_([{=%°*\\&@#€$<>~^", *next)) return false;
  const auto* after = behind.peek(1);
  if (after == nullptr || !after->isJoined || after->kind == DateToken::Kind::mark) return true;
  if (contains(u".:/+'’", *next)) return false;
  return !contains(u",-", *next) || !after->isNumber() || next->isMark(u'-');
}

/// The cursor behind what may stand between a day and its time, and what the word for "at" adds to small hours.
struct Join {
  DateCursor cursor;
  std::optional<int> at;
  bool isIso = false;
};

Join joinOf(DateCursor cursor) {
  if (cursor.word(Kind::isoTime) != nullptr && cursor.peek()->isJoined) {
    cursor.skip();
    return {cursor, std::nullopt, true};
  }
  for (const char16_t mark : {u',', u'·', u'•', u'|', u'-', u'@'}) {
    if (cursor.isMark(mark) && (mark == u',' || !cursor.peek()->isJoined) && cursor.skipMark(mark)) break;
  }
  const auto* at = cursor.word(Kind::at);
  const auto value = at == nullptr ? std::nullopt : std::optional(at->value);
  if (at != nullptr) cursor.skip();
  return {cursor, value};
}

/// An hour without any more words, as people say it: "at 5" is no time in the night.
DateTime asSaid(DateTime time, int at) {
  constexpr int latestAfternoon = 6;
  if (time.isBareHour && time.hour >= 1 && time.hour <= latestAfternoon) time.hour += at;
  return time;
}

/// "Sat Nov 21 17:05:00 2026" has its year at the end.
DateRead<DateExpression> withYearAtEnd(DateRead<DateExpression> date) {
  const auto* year = date.behind.number(0, 4, 4);
  if (!date.value.month || date.value.year || year == nullptr || year->isJoined) return date;
  if (year->value < 1900 || year->value > 2199) return date;
  date.value.year = year->value;
  date.behind.skip();
  return date;
}

DateRead<DateExpression> withZone(DateRead<DateExpression> date, bool isIso) {
  const bool isPrecise = isIso || (date.value.time && date.value.time->hasSeconds);
  const auto zone = DateTimes::zone(date.behind, isPrecise ? DateTimes::Precise::Yes : DateTimes::Precise::No);
  if (!zone) return date;
  date.value.zoneMinutes = zone->value;
  return {date.value, zone->behind};
}

DateRead<DateExpression> withTime(const DateRead<DateExpression>& day, const DateWords& words) {
  const auto join = joinOf(day.behind);
  const auto time = DateTimes::time(join.cursor, words);
  if (!time || (time->value.isBareHour && !join.at)) return day;
  auto date = day;
  date.value.time = asSaid(time->value, join.at.value_or(0));
  date.behind = time->behind;
  date = withYearAtEnd(withZone(date, join.isIso));
  return mayEnd(date.behind) ? date : day;
}

DateRead<DateExpression> withDayPart(DateRead<DateExpression> day) {
  const auto* part = day.behind.word(Kind::dayPart);
  if (part == nullptr || day.value.partHour) return day;
  day.value.partHour = part->value;
  day.behind.skip();
  return day;
}

bool isShortWeekday(const DateCursor& from) {
  const auto* weekday = from.word(Kind::weekday);
  return weekday != nullptr && weekday->isShort;
}

/// "Saturday, 21 November", "Sa. 21.11."
Read datedWeekday(DateCursor cursor, const DateWords& words) {
  const bool isShort = isShortWeekday(cursor);
  if (!cursor.skipWord(Kind::weekday)) return std::nullopt;
  if (isShort && cursor.isJoinedMark(u'.')) cursor.skip();
  cursor.skipMark(u',');
  cursor.skipWord(Kind::on);
  cursor.skipWord(Kind::of);
  if (auto date = DateDays::calendarDate(cursor, words)) return date;
  return DateDays::dayAndMonthNumbers(cursor);
}

/// "Fr. 14:00": the full stop of an abbreviation in front of a time.
DateRead<DateExpression> withoutStop(DateRead<DateExpression> day) {
  if (day.behind.isJoinedMark(u'.') && day.behind.number(1, 1, 2) != nullptr) day.behind.skip();
  return day;
}

/// A day, whatever stands behind it.
Read dayAt(const DateCursor& from, const DateWords& words) {
  if (auto date = datedWeekday(from, words)) return date;
  if (auto date = DateDays::calendarDate(from, words)) return date;
  return DateDays::namedDay(from);
}

/// Whether a day without a time is one: not an abbreviated weekday, and not what else "Morgen" can mean.
bool saysEnough(const DateCursor& from, const DateExpression& expression) {
  if (expression.time || expression.partHour) return true;
  if (isShortWeekday(from)) return expression.month.has_value();
  const auto* relative = from.word(Kind::relativeDay);
  return relative == nullptr || !relative->needsCompany || !from.peek()->isCapital;
}

Read dayFirst(const DateCursor& from, const DateWords& words) {
  auto day = dayAt(from, words);
  if (!day) return std::nullopt;
  if (isShortWeekday(from) && !day->value.month) day = withoutStop(*day);
  const bool isMoment =
      day->value.span && (day->value.span->unit == Kind::minutes || day->value.span->unit == Kind::hours);
  const auto date = isMoment ? *day : withTime(withDayPart(*day), words);
  return saysEnough(from, date.value) ? Read(date) : std::nullopt;
}

/// "5 pm", "at 17:00", "14:00 on Friday", "5 pm tomorrow".
Read timeFirst(DateCursor cursor, const DateWords& words) {
  const auto* at = cursor.word(Kind::at);
  const int afternoon = at == nullptr ? 0 : at->value;
  if (at != nullptr) cursor.skip();
  const auto time = DateTimes::time(cursor, words);
  if (!time || (time->value.isBareHour && at == nullptr)) return std::nullopt;
  DateExpression expression;
  expression.time = asSaid(time->value, afternoon);
  const auto alone = withZone({expression, time->behind}, false);

  auto behind = alone.behind;
  behind.skipMark(u',');
  behind.skipWord(Kind::on);
  if (auto day = dayAt(behind, words); day && mayEnd(day->behind) && !day->value.span) {
    day->value.time = alone.value.time;
    day->value.zoneMinutes = alone.value.zoneMinutes;
    return withDayPart(*day);
  }
  // A time by itself is one only when it says so: others are durations and the clocks of logs and chats.
  const bool isSaid = at != nullptr && !time->value.isBareHour && !time->value.hasSeconds;
  return time->value.isWhole || isSaid ? Read(alone) : std::nullopt;
}

/// Words in front that make something else of what follows: "finished in 2 hours", "Guten Morgen", "31 February 12".
bool isMisled(std::span<const DateToken> tokens, std::size_t first) {
  if (first == 0 || tokens[first].startsLine) return false;
  const auto& before = tokens[first - 1];
  const auto& token = tokens[first];
  if (token.as(Kind::within) != nullptr) return before.as(Kind::done) != nullptr;
  if (const auto* day = token.as(Kind::relativeDay)) return day->needsCompany && before.as(Kind::greeting) != nullptr;
  return token.as(Kind::month) != nullptr && before.isNumber() && before.digits() <= 2;
}

}  // namespace

std::optional<FoundDate> readDate(std::span<const DateToken> tokens, const DateWords& words, std::size_t first,
                                  std::size_t formerEnd) {
  const auto& token = tokens[first];
  const bool isCandidate = token.isNumber() || (token.kind == DateToken::Kind::word && token.meanings != nullptr);
  if (!isCandidate || !mayBegin(tokens, first, formerEnd) || isMisled(tokens, first)) return std::nullopt;
  const DateCursor from(tokens, first);
  auto date = dayFirst(from, words);
  if (!date || !mayEnd(date->behind)) date = timeFirst(from, words);
  if (!date || !mayEnd(date->behind)) return std::nullopt;
  return FoundDate{date->value, date->behind.place()};
}

}  // namespace Nimbrel
