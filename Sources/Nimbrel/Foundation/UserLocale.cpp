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

std::string region() {
  auto locale = localeFor("LC_TELEPHONE");
  UErrorCode status = U_ZERO_ERROR;
  if (*locale.getCountry() == '\0') locale.addLikelySubtags(status);
  // Three digits name a continent or the world.
  const std::string country = locale.getCountry();
  return U_SUCCESS(status) && country.size() == 2 ? country : icu::Locale::getUS().getCountry();
}

}  // namespace Nimbrel::UserLocale
