#include "Analysis/DateExpression.h"

#include <unicode/timezone.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <memory>

namespace Nimbrel {

namespace {

using namespace std::chrono;
using Local = local_time<Seconds>;

/// The user's zone as the environment has it.
class LocalZone {
 public:
  LocalZone() : zone_(icu::TimeZone::createDefault()) {}

  [[nodiscard]] Local localOf(Timestamp moment) const {
    return Local{moment.time_since_epoch() + offset(secondsSince1970(moment), false)};
  }
  /// A time that the change to summer time leaves out is counted on from the one before.
  [[nodiscard]] Timestamp momentOf(Local local) const {
    return Timestamp{local.time_since_epoch() - offset(local.time_since_epoch().count(), true)};
  }

 private:
  [[nodiscard]] Seconds offset(double seconds, bool isLocal) const {
    std::int32_t standard = 0;
    std::int32_t daylight = 0;
    UErrorCode status = U_ZERO_ERROR;
    zone_->getOffset(seconds * 1000.0, static_cast<UBool>(isLocal), standard, daylight, status);
    return Seconds{(standard + daylight) / 1000.0};
  }

  std::unique_ptr<icu::TimeZone> zone_;
};

constexpr int noon = 12;
constexpr int afternoon = 15;
constexpr int night = 20;

Seconds timeOfDay(const DateExpression& expression) {
  if (!expression.time) return hours(expression.partHour.value_or(noon));
  const auto& time = *expression.time;
  // "This evening at 8"; but "tonight at 2" is no afternoon.
  const int part = expression.partHour.value_or(0);
  const bool isLate = !time.isWhole && part >= afternoon && time.hour < noon && (part < night || time.hour > 4);
  return hours(time.hour + (isLate ? noon : 0)) + minutes(time.minute) + seconds(time.second);
}

std::optional<local_days> validDay(year_month_day day) {
  return day.ok() ? std::optional(local_days(day)) : std::nullopt;
}

std::optional<local_days> calendarDay(const DateExpression& expression, local_days today) {
  const auto monthDay = month(static_cast<unsigned>(*expression.month)) / day(static_cast<unsigned>(*expression.day));
  if (expression.year) return validDay(year(*expression.year) / monthDay);
  const auto thisYear = year_month_day(today).year();
  std::optional<local_days> nearest;
  for (const int offset : {0, -1, 1}) {
    const auto candidate = validDay((thisYear + years(offset)) / monthDay);
    if (candidate && (!nearest || abs(*candidate - today) < abs(*nearest - today))) nearest = candidate;
  }
  return nearest;
}

local_days weekdayOf(int weekday, const DateExpression& expression, Local now) {
  const auto today = floor<days>(now);
  const auto wanted = std::chrono::weekday(static_cast<unsigned>(weekday));
  if (expression.turn == DateExpression::Turn::last) {
    const auto back = std::chrono::weekday(today) - wanted;
    return today - (back == days(0) ? days(7) : back);
  }
  const auto ahead = wanted - std::chrono::weekday(today);
  const bool isOver = expression.turn == DateExpression::Turn::next || today + timeOfDay(expression) <= now;
  return today + (ahead == days(0) && isOver ? days(7) : ahead);
}

/// The same day of a later month, or that month's last day.
local_days monthsLater(local_days today, int count) {
  const year_month_day day(today);
  const auto target = year_month(day.year(), day.month()) + months(count);
  const auto same = target / day.day();
  return same.ok() ? local_days(same) : local_days(target / std::chrono::last);
}

local_days dayAfter(const DateExpression::Span& span, local_days today) {
  if (span.unit == DateWord::Kind::months) return monthsLater(today, span.count);
  return today + (span.unit == DateWord::Kind::weeks ? days(weeks(span.count)) : days(span.count));
}

std::optional<Seconds> shortSpan(const DateExpression& expression) {
  if (!expression.span) return std::nullopt;
  if (expression.span->unit == DateWord::Kind::minutes) return minutes(expression.span->count);
  if (expression.span->unit == DateWord::Kind::hours) return hours(expression.span->count);
  return std::nullopt;
}

std::optional<local_days> dayOf(const DateExpression& expression, Local now) {
  const auto today = floor<days>(now);
  if (expression.month) return calendarDay(expression, today);
  if (expression.span) return dayAfter(*expression.span, today);
  if (expression.relativeDays) return today + days(*expression.relativeDays);
  if (expression.weekday) return weekdayOf(*expression.weekday, expression, now);
  return today;
}

}  // namespace

std::optional<Timestamp> momentOf(const DateExpression& expression, Timestamp now) {
  // Beyond these the calendar of chrono ends; no clock tells such times.
  constexpr double limit = 9e11;
  if (!(std::abs(secondsSince1970(now)) < limit)) return std::nullopt;
  if (const auto span = shortSpan(expression)) return now + *span;
  const LocalZone zone;
  const auto day = dayOf(expression, zone.localOf(now));
  if (!day) return std::nullopt;
  const Local local = *day + timeOfDay(expression);
  if (expression.zoneMinutes) return Timestamp{local.time_since_epoch() - minutes(*expression.zoneMinutes)};
  return zone.momentOf(local);
}

}  // namespace Nimbrel
