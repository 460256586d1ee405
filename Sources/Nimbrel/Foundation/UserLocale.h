#pragma once

#include <unicode/locid.h>

#include <string>

/// The locale that the user's environment asks for, by purpose. A missing, "C" or "POSIX" locale is answered with US
/// English, which is what our own words are written in.
namespace Nimbrel::UserLocale {

/// For dates and times: LC_ALL, else LC_TIME, else LANG.
[[nodiscard]] icu::Locale forDates();

/// For numbers: LC_ALL, else LC_NUMERIC, else LANG.
[[nodiscard]] icu::Locale forNumbers();

/// For the order and the likeness of texts: LC_ALL, else LC_COLLATE, else LANG.
[[nodiscard]] icu::Locale forComparison();

/// The language of words: LC_ALL, else LC_MESSAGES, else LANG.
[[nodiscard]] icu::Locale forMessages();

/// The country that the user's telephone numbers are of, as two capital letters: that of LC_ALL, else LC_TELEPHONE,
/// else LANG, and where these name a language alone, the country where most of its speakers live.
[[nodiscard]] std::string region();

}  // namespace Nimbrel::UserLocale
