#pragma once

#include "Foundation/Timestamp.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Dates and sizes in words, in the user's locale, calendar and time zone. Any thread.
namespace Nimbrel::Formats {

/// The number of the local day that holds the moment; neighbouring days have neighbouring numbers.
[[nodiscard]] std::int64_t localDay(Timestamp moment);

/// The title of a day: "Today", "Yesterday", "EEEE, MMM d" within this year, else "MMM d, yyyy". The order of the parts
/// is the same in every locale; the words are the locale's.
[[nodiscard]] std::string relativeDay(Timestamp date, Timestamp now);

/// The moment by a fixed pattern of Unicode's date fields, for instance "yyyy-MM".
[[nodiscard]] std::string date(Timestamp moment, std::u16string_view pattern);

/// Date in the locale's medium style and time in its short one.
[[nodiscard]] std::string mediumDateShortTime(Timestamp moment);

/// The time of day in the locale's short style.
[[nodiscard]] std::string shortTime(Timestamp moment);

/// A file's size for people, in powers of 1000: "Zero KB", "1 byte", "512 bytes", "24 KB", "1.2 MB", "3.46 GB".
[[nodiscard]] std::string byteCount(std::int64_t bytes);

}  // namespace Nimbrel::Formats
