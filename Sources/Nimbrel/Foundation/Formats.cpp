#include "Foundation/Formats.h"

#include "Foundation/UserLocale.h"

#include <unicode/basictz.h>
#include <unicode/datefmt.h>
#include <unicode/numberformatter.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/tztrans.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <memory>

namespace Nimbrel::Formats {

namespace {

constexpr double millisecondsPerDay = 86'400'000.0;

/// A moment as ICU takes it. What lies beyond its calendar is held at the calendar's end.
UDate icuDate(Timestamp moment) {
  constexpr double limit = 8.64e15;
  const double milliseconds = secondsSince1970(moment) * 1000.0;
  return std::isnan(milliseconds) ? 0.0 : std::clamp(milliseconds, -limit, limit);
}

std::string utf8(const icu::UnicodeString& text) {
  std::string bytes;
  return text.toUTF8String(bytes);
}

std::string formatted(const icu::DateFormat* format, Timestamp moment) {
  if (format == nullptr) return {};
  icu::UnicodeString text;
  return utf8(format->format(icuDate(moment), text));
}

/// Creating a format costs a thousand times what using it does, so each thread keeps those it has used.
const icu::DateFormat* formatFor(std::u16string_view pattern) {
  thread_local std::map<std::u16string, std::unique_ptr<icu::DateFormat>, std::less<>> formats;
  if (const auto known = formats.find(pattern); known != formats.end()) return known->second.get();
  UErrorCode status = U_ZERO_ERROR;
  const icu::UnicodeString icuPattern(pattern.data(), static_cast<std::int32_t>(pattern.size()));
  auto format = std::make_unique<icu::SimpleDateFormat>(icuPattern, UserLocale::forDates(), status);
  if (U_FAILURE(status)) format.reset();
  return formats.emplace(pattern, std::move(format)).first->second.get();
}

const icu::TimeZone& localTimeZone() {
  thread_local const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createDefault());
  return *zone;
}

/// A stretch of time, and by how much local time is ahead of UTC in it, in milliseconds.
struct OffsetSpan {
  UDate start = 0;
  UDate end = 0;
  double offset = 0;

  [[nodiscard]] bool holds(UDate date) const { return date >= start && date < end; }
};

OffsetSpan spanOf(UDate date) {
  const auto& zone = localTimeZone();
  std::int32_t standardOffset = 0;
  std::int32_t daylightOffset = 0;
  UErrorCode status = U_ZERO_ERROR;
  zone.getOffset(date, false, standardOffset, daylightOffset, status);
  OffsetSpan span{.start = date, .end = date, .offset = static_cast<double>(standardOffset) + daylightOffset};
  const auto* rules = dynamic_cast<const icu::BasicTimeZone*>(&zone);
  if (rules == nullptr) return span;
  icu::TimeZoneTransition change;
  constexpr auto always = std::numeric_limits<UDate>::infinity();
  span.start = rules->getPreviousTransition(date, true, change) != 0 ? change.getTime() : -always;
  span.end = rules->getNextTransition(date, false, change) != 0 ? change.getTime() : always;
  return span;
}

std::chrono::year yearOfDay(std::int64_t day) {
  return std::chrono::year_month_day(std::chrono::sys_days(std::chrono::days(day))).year();
}

std::string localizedNumber(double number, int fractionDigits) {
  using namespace icu::number;
  UErrorCode status = U_ZERO_ERROR;
  const auto text = NumberFormatter::withLocale(UserLocale::forNumbers())
                        .precision(Precision::maxFraction(fractionDigits))
                        .roundingMode(UNUM_ROUND_HALFEVEN)
                        .formatDouble(number, status)
                        .toString(status);
  return U_SUCCESS(status) ? utf8(text) : std::to_string(number);
}

}  // namespace

std::int64_t localDay(Timestamp moment) {
  // Moments that are asked about come in the order of time, and clocks are changed twice a year.
  thread_local OffsetSpan span;
  const auto date = icuDate(moment);
  if (!span.holds(date)) span = spanOf(date);
  return static_cast<std::int64_t>(std::floor((date + span.offset) / millisecondsPerDay));
}

std::string relativeDay(Timestamp moment, Timestamp now) {
  const auto day = localDay(moment);
  const auto today = localDay(now);
  if (day == today) return "Today";
  if (day == today - 1) return "Yesterday";
  return date(moment, yearOfDay(day) == yearOfDay(today) ? u"EEEE, MMM d" : u"MMM d, yyyy");
}

std::string date(Timestamp moment, std::u16string_view pattern) { return formatted(formatFor(pattern), moment); }

std::string mediumDateShortTime(Timestamp moment) {
  thread_local const std::unique_ptr<icu::DateFormat> format(icu::DateFormat::createDateTimeInstance(
      icu::DateFormat::kMedium, icu::DateFormat::kShort, UserLocale::forDates()));
  return formatted(format.get(), moment);
}

std::string shortTime(Timestamp moment) {
  thread_local const std::unique_ptr<icu::DateFormat> format(
      icu::DateFormat::createTimeInstance(icu::DateFormat::kShort, UserLocale::forDates()));
  return formatted(format.get(), moment);
}

std::string byteCount(std::int64_t bytes) {
  struct Unit {
    const char* name;
    int fractionDigits;
  };
  static constexpr std::array<Unit, 6> units{{{"KB", 0}, {"MB", 1}, {"GB", 2}, {"TB", 2}, {"PB", 2}, {"EB", 2}}};
  if (bytes == 0) return "Zero KB";
  if (bytes == 1) return "1 byte";
  if (bytes > -1000 && bytes < 1000) return localizedNumber(static_cast<double>(bytes), 0) + " bytes";

  double number = static_cast<double>(bytes) / 1000.0;
  std::size_t unit = 0;
  const auto roundsUpToNextUnit = [&] {
    const double scale = std::pow(10.0, units.at(unit).fractionDigits);
    return std::round(std::abs(number) * scale) / scale >= 1000.0;
  };
  while (unit + 1 < units.size() && roundsUpToNextUnit()) {
    number /= 1000.0;
    ++unit;
  }
  return localizedNumber(number, units.at(unit).fractionDigits) + " " + units.at(unit).name;
}

}  // namespace Nimbrel::Formats
