#include "Foundation/UserLocale.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace Nimbrel::UserLocale {

namespace {

std::string environmentLocale(const char* category) {
  for (const char* name : {"LC_ALL", category, "LANG"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') return value;
  }
  return {};
}

icu::Locale localeFor(const char* category) {
  std::string name = environmentLocale(category);
  // "de_DE.UTF-8@euro" names a language and a region; the rest speaks of bytes and of keyboards.
  name.resize(std::min(name.find_first_of(".@"), name.size()));
  if (name.empty() || name == "C" || name == "POSIX") return icu::Locale::getUS();
  const icu::Locale locale(name.c_str());
  return locale.isBogus() ? icu::Locale::getUS() : locale;
}

}  // namespace

icu::Locale forDates() { return localeFor("LC_TIME"); }
icu::Locale forNumbers() { return localeFor("LC_NUMERIC"); }
icu::Locale forComparison() { return localeFor("LC_COLLATE"); }
icu::Locale forMessages() { return localeFor("LC_MESSAGES"); }

}  // namespace Nimbrel::UserLocale
