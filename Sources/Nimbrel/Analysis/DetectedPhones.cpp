#include "Analysis/DetectedPhones.h"

#include "Foundation/Text.h"
#include "Foundation/UserLocale.h"

#include <phonenumbers/phonenumbermatch.h>
#include <phonenumbers/phonenumbermatcher.h>
#include <phonenumbers/phonenumberutil.h>

#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

namespace Nimbrel::DetectedPhones {

namespace {

using i18n::phonenumbers::PhoneNumberMatch;
using i18n::phonenumbers::PhoneNumberMatcher;
using i18n::phonenumbers::PhoneNumberUtil;

/// Words behind which even a bare run of digits is a phone number.
constexpr std::array<std::u16string_view, 27> phoneWords{
    u"anruf",     u"anrufen", u"call",  u"cell",    u"cellular", u"contact", u"dial",      u"durchwahl", u"fax",
    u"festnetz",  u"fon",     u"handy", u"hotline", u"mob",      u"mobil",   u"mobile",    u"phone",     u"ring",
    u"rufnummer", u"sms",     u"tel",   u"tele",    u"telefax",  u"telefon", u"telephone", u"text",      u"whatsapp"};

/// Words behind which digits are something else, however they are grouped.
constexpr std::array<std::u16string_view, 45> otherWords{u"account",
                                                         u"aktenzeichen",
                                                         u"article",
                                                         u"artikel",
                                                         u"artikelnummer",
                                                         u"asin",
                                                         u"auftrag",
                                                         u"auftragsnummer",
                                                         u"bestellnummer",
                                                         u"bestellung",
                                                         u"bic",
                                                         u"bestellnr",
                                                         u"card",
                                                         u"case",
                                                         u"code",
                                                         u"customer",
                                                         u"ean",
                                                         u"gtin",
                                                         u"iban",
                                                         u"id",
                                                         u"imei",
                                                         u"invoice",
                                                         u"isbn",
                                                         u"issn",
                                                         u"item",
                                                         u"karte",
                                                         u"kartennummer",
                                                         u"konto",
                                                         u"kontonummer",
                                                         u"kunde",
                                                         u"kundennummer",
                                                         u"order",
                                                         u"pin",
                                                         u"rechnung",
                                                         u"rechnungsnummer",
                                                         u"ref",
                                                         u"reference",
                                                         u"routing",
                                                         u"serial",
                                                         u"sku",
                                                         u"steuernummer",
                                                         u"ticket",
                                                         u"tracking",
                                                         u"transaction",
                                                         u"vin"};

/// Words between those and the digits, as in "order number: 12".
constexpr std::array<std::u16string_view, 12> numberWords{u"id", u"is", u"ist", u"lautet", u"me",     u"mich",
                                                          u"no", u"nr", u"num", u"number", u"nummer", u"us"};

/// Groups of digits with a few characters between them, and what may lead and follow.
constexpr std::u16string_view expression =
    uR"((?:[+＋]|\((?=[+＋\p{Nd}])[+＋]?)?+\p{Nd}++(?:[\u0020\u00A0\u2007\u202F().\-/\u2010-\u2015\uFF0D]{1,3}+(?=\p{Nd})\p{Nd}++)*+)"
    uR"((?i:,?[ \u00A0]?(?:ext(?:ension|n)?\.?|durchwahl|x)[ :.]{0,2}+\p{Nd}{1,6}+(?!\p{Nd}))?+)";

constexpr int fewestDigits = 7;
constexpr int mostDigits = 40;
/// The library takes up to a fifth of a millisecond over a run. A recognised picture holds a few dozen.
constexpr int mostRuns = 1500;

bool isDigit(char16_t unit) { return u_isdigit(unit) != 0; }
bool isLetter(char16_t unit) { return u_isalpha(unit) != 0; }

std::ptrdiff_t digitsIn(std::u16string_view text) { return std::ranges::count_if(text, isDigit); }

/// The last word in front of a place, in lower case, and what stands before it. Empty when something else than blanks,
/// colons and the like is between.
std::pair<std::u16string, std::u16string_view> lastWord(std::u16string_view before) {
  constexpr std::u16string_view between = u" \u00A0\t:.#=(-–°";
  while (!before.empty() && between.find(before.back()) != std::u16string_view::npos) before.remove_suffix(1);
  const auto isPart = [](char16_t unit) { return isLetter(unit); };
  constexpr std::size_t longest = 24;
  std::size_t length = 0;
  while (length < std::min(before.size(), longest) && isPart(before[before.size() - 1 - length])) ++length;
  const auto word = before.substr(before.size() - length);
  return {Text::toUtf16(Text::lowered(Text::toUtf8(word))), before.substr(0, before.size() - length)};
}

enum class Cue { none, phone, other };

/// What the words in front of a number say that it is.
Cue cueBefore(std::u16string_view before) {
  auto [word, rest] = lastWord(before);
  if (std::ranges::find(otherWords, word) != otherWords.end()) return Cue::other;
  if (std::ranges::find(numberWords, word) != numberWords.end()) word = lastWord(rest).first;
  if (std::ranges::find(otherWords, word) != otherWords.end()) return Cue::other;
  return std::ranges::find(phoneWords, word) != phoneWords.end() ? Cue::phone : Cue::none;
}

/// Whether the character in front of a run lets a number begin there.
bool mayBegin(std::u16string_view before) {
  if (before.empty()) return true;
  const auto last = before.back();
  constexpr std::u16string_view never = u"._/\\-#$€£¥%@&=+*~^–";
  if (isLetter(last) || isDigit(last) || never.find(last) != std::u16string_view::npos) return false;
  // "10:30" is a time; "Tel:030" is none. "1,200 300" and "3,5" are amounts.
  const bool digitBefore = before.size() > 1 && isDigit(before[before.size() - 2]);
  return (last != u':' && last != u',') || !digitBefore;
}

/// Whether the characters behind a run let a number end there.
bool mayEnd(std::u16string_view behind) {
  if (behind.empty()) return true;
  constexpr std::u16string_view never = u"_\\#$€£¥%@&=+*~^";
  if (isLetter(behind[0]) || never.find(behind[0]) != std::u16string_view::npos) return false;
  constexpr std::u16string_view inner = u".,:/-";
  const bool goesOn = behind.size() > 1 && (isDigit(behind[1]) || isLetter(behind[1]));
  if (inner.find(behind[0]) != std::u16string_view::npos && goesOn) return false;
  return behind.size() < 2 || behind[0] != u' ' ||
         std::u16string_view(u"€$£¥%").find(behind[1]) == std::u16string_view::npos;
}

/// Four numbers below 256 with dots: an address in a network.
bool isNetworkAddress(std::u16string_view run) {
  int groups = 1;
  std::size_t length = 0;
  for (const auto unit : run) {
    if (unit != u'.' && !isDigit(unit)) return false;
    length = unit == u'.' ? 0 : length + 1;
    if (length > 3) return false;
    if (unit == u'.') ++groups;
  }
  return groups == 4;
}

/// Whether most groups are of one digit, as in columns: no number, whatever it would dial.
bool isScattered(std::u16string_view run) {
  int groups = 0;
  int single = 0;
  for (std::size_t place = 0; place < run.size(); ++place) {
    if (!isDigit(run[place]) || (place > 0 && isDigit(run[place - 1]))) continue;
    ++groups;
    if (place + 1 == run.size() || !isDigit(run[place + 1])) ++single;
  }
  return 2 * single > groups;
}

bool hasSeparator(std::u16string_view run) {
  return std::ranges::any_of(run, [](char16_t unit) { return !isDigit(unit); });
}

bool isWorthALook(std::u16string_view text, const TextRange& range) {
  const auto run = text.substr(range.start, range.length);
  const auto digits = digitsIn(run);
  if (digits < fewestDigits || digits > mostDigits || isNetworkAddress(run) || isScattered(run)) return false;
  const auto before = text.substr(0, range.start);
  if (!mayBegin(before) || !mayEnd(text.substr(range.end()))) return false;
  const auto cue = cueBefore(before);
  return cue != Cue::other && (cue == Cue::phone || hasSeparator(run));
}

DetectedItem itemOf(std::u16string_view number) {
  std::u16string compact(number);
  std::erase_if(compact, [](char16_t unit) { return u_isUWhiteSpace(unit) != 0; });
  const bool isUrl = std::ranges::all_of(compact, [](char16_t unit) { return unit < 0x80 && unit != u'#'; });
  const auto url = isUrl ? std::optional("tel:" + Text::toUtf8(compact)) : std::nullopt;
  return {.kind = DetectedItem::Kind::phone, .text = Text::toUtf8(number), .url = url, .date = {}};
}

/// The numbers of a run; none when some of its digits belong to no number, since then it is something else.
DetectedFindings numbersIn(std::u16string_view run, std::size_t start, const std::string& region) {
  const auto utf8 = Text::toUtf8(run);
  PhoneNumberMatcher matcher(*PhoneNumberUtil::GetInstance(), utf8, region, PhoneNumberMatcher::VALID, 1 << 10);
  DetectedFindings findings;
  auto digits = digitsIn(run);
  PhoneNumberMatch match;
  while (matcher.HasNext() && matcher.Next(&match)) {
    // The library counts bytes.
    const auto before = Text::toUtf16(utf8.substr(0, static_cast<std::size_t>(match.start()))).size();
    const auto number = Text::toUtf16(match.raw_string());
    digits -= digitsIn(number);
    findings.push_back({{start + before, number.size()}, itemOf(number)});
  }
  return digits == 0 ? findings : DetectedFindings{};
}

}  // namespace

DetectedFindings numbers(std::u16string_view text) {
  static const auto pattern = Pattern::compile(expression);
  DetectedFindings findings;
  if (!pattern) return findings;
  const auto region = UserLocale::region();
  int runs = 0;
  for (const auto& range : pattern->matches(text)) {
    if (!isWorthALook(text, range)) continue;
    if (++runs > mostRuns) break;
    auto found = numbersIn(text.substr(range.start, range.length), range.start, region);
    std::ranges::move(found, std::back_inserter(findings));
  }
  return findings;
}

}  // namespace Nimbrel::DetectedPhones
