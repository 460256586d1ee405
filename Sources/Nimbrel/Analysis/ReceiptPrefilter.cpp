#include "Analysis/ReceiptSignals.h"

#include <algorithm>
#include <array>

namespace Nimbrel::ReceiptPrefilter {

namespace {

constexpr std::array<std::string_view, 4> currencies{"usd", "eur", "gbp", "inr"};

constexpr bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }
constexpr bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
/// A digit, or part of a character that may be one: expressions know the digits of all scripts.
constexpr bool mayBeDigit(char c) { return (c >= '0' && c <= '9') || !isAscii(c); }

/// Whether one of the marks stands between two characters that may be digits.
bool holdsBetweenDigits(std::string_view text, std::string_view marks) {
  for (auto at = text.find_first_of(marks); at != std::string_view::npos; at = text.find_first_of(marks, at + 1)) {
    if (at > 0 && at + 1 < text.size() && mayBeDigit(text[at - 1]) && mayBeDigit(text[at + 1])) return true;
  }
  return false;
}

/// Whether what follows "order" may go on with "number", "no", "#" or "id".
bool mayBeNumbered(std::string_view after) {
  const auto next = std::ranges::find_if_not(after, isSpace);
  return next != after.end() && (*next == 'n' || *next == '#' || *next == 'i' || !isAscii(*next));
}

}  // namespace

bool mayHoldAmount(std::string_view line) {
  if (std::ranges::none_of(line, mayBeDigit)) return false;
  if (holdsBetweenDigits(line, ".,") || line.find('$') != std::string_view::npos) return true;
  // The other signs of currencies, and all digits but the usual ones.
  if (!std::ranges::all_of(line, isAscii)) return true;
  return std::ranges::any_of(currencies,
                             [&](std::string_view name) { return line.find(name) != std::string_view::npos; });
}

bool mayHoldDate(std::string_view line) { return holdsBetweenDigits(line, "/.-"); }

bool mayHoldOrderNumber(std::string_view text) {
  return std::ranges::any_of(phrasesOf(PhraseList::order), [&](std::string_view word) {
    for (auto at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
      if (mayBeNumbered(text.substr(at + word.size()))) return true;
    }
    return false;
  });
}

}  // namespace Nimbrel::ReceiptPrefilter
