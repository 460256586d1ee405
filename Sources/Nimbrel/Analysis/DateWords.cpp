#include "Analysis/DateWords.h"

#include "Analysis/DateWordTable.h"
#include "Foundation/UserLocale.h"

#include <unicode/dtfmtsym.h>
#include <unicode/reldatefmt.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <cstdint>
#include <mutex>

namespace Nimbrel {

namespace {

std::u16string folded(icu::UnicodeString text) {
  text.foldCase();
  return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

/// A name as it stands in a text, where the full stop of an abbreviation is a token of its own.
std::u16string wordOf(const icu::UnicodeString& name) {
  auto word = folded(name);
  while (!word.empty() && word.back() == u'.') word.pop_back();
  return word;
}

}  // namespace

DateWords::DateWords(const char* locale) {
  const icu::Locale language(locale);
  addTable("en");
  addNames("en");
  if (std::string_view(language.getLanguage()) != "en") {
    addTable(language.getLanguage());
    addNames(locale);
    addRelativeDays(locale);
  }
  amIsAWord_ = std::string_view(language.getLanguage()) == "de";
  readShortDate(locale);
}

std::shared_ptr<const DateWords> DateWords::ofUser() {
  static std::mutex mutex;
  static std::map<std::string, std::shared_ptr<const DateWords>, std::less<>> made;
  const auto locale = UserLocale::forDates();
  const std::scoped_lock lock(mutex);
  auto& words = made[locale.getName()];
  if (!words) words.reset(new DateWords(locale.getName()));
  return words;
}

const std::vector<DateWord>* DateWords::meanings(std::u16string_view word) const {
  constexpr std::size_t longest = 24;
  if (word.size() > longest) return nullptr;
  const auto known = words_.find(folded({false, word.data(), static_cast<std::int32_t>(word.size())}));
  return known == words_.end() ? nullptr : &known->second;
}

void DateWords::add(std::u16string_view word, const DateWord& meaning) {
  auto& meanings = words_[std::u16string(word)];
  const auto isSame = [&](const DateWord& other) { return other.kind == meaning.kind && other.value == meaning.value; };
  // The first says whether it is short: in a language whose short name is the whole name it is the long one.
  if (!word.empty() && std::ranges::none_of(meanings, isSame)) meanings.push_back(meaning);
}

void DateWords::addTable(std::string_view language) {
  for (const auto& entry : dateWordTable) {
    if (entry.language == language) add(entry.word, entry.meaning);
  }
}

void DateWords::addNames(const char* locale) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::DateFormatSymbols symbols(icu::Locale(locale), status);
  if (U_FAILURE(status)) return;
  using Symbols = icu::DateFormatSymbols;
  for (const auto width : {Symbols::WIDE, Symbols::ABBREVIATED}) {
    for (const auto context : {Symbols::FORMAT, Symbols::STANDALONE}) {
      std::int32_t count = 0;
      const auto addName = [&](const icu::UnicodeString& name, DateWord meaning) {
        const auto word = wordOf(name);
        meaning.isShort = width == Symbols::ABBREVIATED;
        meaning.needsCapital = std::ranges::find(everydayNames, word) != everydayNames.end();
        add(word, meaning);
      };
      const auto* months = symbols.getMonths(count, context, width);
      for (int month = 0; month < count; ++month) addName(months[month], {DateWord::Kind::month, month + 1});
      // The first weekday has the number one.
      const auto* weekdays = symbols.getWeekdays(count, context, width);
      for (int day = 1; day < count; ++day) addName(weekdays[day], {DateWord::Kind::weekday, day - 1});
    }
  }
}

void DateWords::addRelativeDays(const char* locale) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::RelativeDateTimeFormatter formatter(icu::Locale(locale), status);
  const auto addDay = [&](UDateDirection direction, int days) {
    icu::UnicodeString name;
    formatter.format(direction, UDAT_ABSOLUTE_DAY, name, status);
    // Where there are several words they are not of one token, and the first alone may mean anything.
    const auto word = folded(name);
    if (U_SUCCESS(status) && word.find(u' ') == std::u16string::npos) add(word, {DateWord::Kind::relativeDay, days});
  };
  addDay(UDAT_DIRECTION_LAST, -1);
  addDay(UDAT_DIRECTION_THIS, 0);
  addDay(UDAT_DIRECTION_NEXT, 1);
}

void DateWords::readShortDate(const char* locale) {
  const std::unique_ptr<icu::DateFormat> format(
      icu::DateFormat::createDateInstance(icu::DateFormat::kShort, icu::Locale(locale)));
  const auto* simple = dynamic_cast<const icu::SimpleDateFormat*>(format.get());
  if (simple == nullptr) return;
  icu::UnicodeString pattern;
  simple->toPattern(pattern);
  dayComesFirst_ = pattern.indexOf(u'd') < pattern.indexOf(u'M');
  const std::u16string_view units(pattern.getBuffer(), static_cast<std::size_t>(pattern.length()));
  const auto separator = units.find_first_of(u"/.-");
  if (separator != std::u16string_view::npos) shortSeparator_ = units[separator];
}

}  // namespace Nimbrel
