#pragma once

#include "Analysis/Detected.h"
#include "Support/EnvironmentVariable.h"

#include <unicode/timezone.h>

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// The user's locale for as long as it lives.
class UserLocaleIs {
 public:
  explicit UserLocaleIs(const std::string& name) : all_("LC_ALL", name) {}

 private:
  EnvironmentVariable all_;
};

/// The user's time zone for as long as it lives.
class TimeZoneIs {
 public:
  explicit TimeZoneIs(const char* name) : former_(icu::TimeZone::createDefault()) {
    icu::TimeZone::adoptDefault(icu::TimeZone::createTimeZone(name));
  }
  ~TimeZoneIs() { icu::TimeZone::adoptDefault(former_.release()); }
  TimeZoneIs(const TimeZoneIs&) = delete;
  TimeZoneIs& operator=(const TimeZoneIs&) = delete;

 private:
  std::unique_ptr<icu::TimeZone> former_;
};

/// A Saturday, 10:00 in UTC.
inline constexpr Timestamp saturdayMorning =
    std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) + std::chrono::hours(10);

/// "Link|http://example.com" for each item that is found.
[[nodiscard]] inline std::vector<std::string> idsIn(std::string_view text, Timestamp now = saturdayMorning) {
  std::vector<std::string> ids;
  for (const auto& item : Detected::items(text, now)) ids.push_back(item.id());
  return ids;
}

/// The texts of the items of one kind.
[[nodiscard]] inline std::vector<std::string> textsIn(std::string_view text, DetectedItem::Kind kind) {
  std::vector<std::string> texts;
  for (const auto& item : Detected::items(text, saturdayMorning)) {
    if (item.kind == kind) texts.push_back(item.text);
  }
  return texts;
}

using Strings = std::vector<std::string>;

}  // namespace Nimbrel::Testing
