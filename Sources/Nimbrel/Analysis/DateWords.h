#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// What a word can mean in a date.
struct DateWord {
  enum class Kind {
    month,           ///< value: 1 to 12
    weekday,         ///< value: 0 is Sunday
    relativeDay,     ///< value: days from today
    dayPart,         ///< value: the hour that is meant when none is named
    dayWithPart,     ///< today, at a part of it: "tonight"; value: its hour
    next,            ///< "next Monday", counted from tomorrow
    coming,          ///< "this Monday", which may be today
    last,            ///< "last Monday"
    within,          ///< "in", before a span of time
    at,              ///< before a time; value: added to an hour from one to six that says no more
    isoTime,         ///< the letter between date and time of ISO 8601
    on,              ///< between a time and a day, or before a day
    of,              ///< between a day and a month
    ordinal,         ///< behind the number of a day: "21st"
    meridiem,        ///< value: 0 is am, 12 is pm
    meridiemLetter,  ///< the same of its first letter: "p.m."
    meridiemEnd,
    hour,     ///< behind the number of an hour: "17 Uhr"; value: 1 when it never is a number of hours
    clock,    ///< value: the hour that it names: "noon"
    number,   ///< value
    minutes,  ///< units of spans
    hours,
    days,
    weeks,
    months,
    zone,      ///< value: minutes east of Greenwich
    done,      ///< before "in", tells of a span that is over: "finished in 2 hours"
    greeting,  ///< before "Morgen", tells that the morning is meant
  };

  Kind kind = Kind::month;
  int value = 0;
  bool isShort = false;       ///< an abbreviation, which is nothing without a date or a time beside it
  bool needsCapital = false;  ///< a word of everyday use unless it begins with a capital letter
  bool needsCompany = false;  ///< the same where it does begin with one: nothing without a time beside it

  bool operator==(const DateWord&) const = default;
};

/// The words that dates are made of in English and in one more language. Immutable; any thread.
class DateWords {
 public:
  /// Those of English and of the locale that dates are in for the user. Made once for each locale.
  [[nodiscard]] static std::shared_ptr<const DateWords> ofUser();

  /// All that a word can mean, whatever its case; null when it means nothing.
  [[nodiscard]] const std::vector<DateWord>* meanings(std::u16string_view word) const;

  /// Whether 4/5 is the fourth of May for the user.
  [[nodiscard]] bool dayComesFirst() const { return dayComesFirst_; }

  /// What stands between the numbers of a short date: a slash, a full stop or a hyphen.
  [[nodiscard]] char16_t shortSeparator() const { return shortSeparator_; }

  /// Whether "am" is a word of the user's language and tells the morning only when it is attached: "5am".
  [[nodiscard]] bool amIsAWord() const { return amIsAWord_; }

 private:
  explicit DateWords(const char* locale);

  void addTable(std::string_view language);
  void addNames(const char* locale);
  void addRelativeDays(const char* locale);
  void readShortDate(const char* locale);
  void add(std::u16string_view word, const DateWord& meaning);

  std::map<std::u16string, std::vector<DateWord>, std::less<>> words_;
  bool dayComesFirst_ = false;
  char16_t shortSeparator_ = u'/';
  bool amIsAWord_ = false;
};

}  // namespace Nimbrel
