#include "Analysis/SensitivePrefilter.h"

#include "Foundation/Utf8.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>

namespace Nimbrel::SensitivePrefilter {

namespace {

constexpr auto npos = std::string_view::npos;

constexpr char lowered(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; }
constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isLetter(char c) { return lowered(c) >= 'a' && lowered(c) <= 'z'; }
constexpr bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }
constexpr bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Calls `visit` with each character beyond ASCII until it returns true; returns whether it did.
template <class Visit>
bool anyBeyondAscii(std::string_view text, Visit visit) {
  while (!text.empty()) {
    const auto skipped = static_cast<std::size_t>(std::ranges::find_if_not(text, isAscii) - text.begin());
    text.remove_prefix(skipped);
    if (text.empty()) break;
    const auto character = Utf8::first(text);
    if (character.isValid && visit(character.code)) return true;
    text.remove_prefix(character.length);
  }
  return false;
}

bool holdsFoldingCharacter(std::string_view text) { return anyBeyondAscii(text, foldsToAsciiLetters); }

bool endsWithIgnoringCase(std::string_view text, std::string_view loweredWord) {
  return text.size() >= loweredWord.size() &&
         std::ranges::equal(text.substr(text.size() - loweredWord.size()), loweredWord, {}, lowered);
}

/// Whether what stands before a ":" or "=" may be one of the words that announce a secret.
bool mayAnnounceSecret(std::string_view before) {
  while (!before.empty() && isSpace(before.back())) before.remove_suffix(1);
  if (before.empty()) return false;
  // A space or a letter of another script: only the expression itself can tell.
  if (!isAscii(before.back())) return true;
  static constexpr std::array<std::string_view, 6> words{"password", "passphrase", "pass", "secret", "key", "token"};
  return std::ranges::any_of(words, [&](std::string_view word) { return endsWithIgnoringCase(before, word); });
}

bool isLocalPartCharacter(char c) {
  return isLetter(c) || isDigit(c) || c == '.' || c == '_' || c == '%' || c == '+' || c == '-';
}

}  // namespace

bool foldsToAsciiLetters(char32_t character) {
  // U+00DF ss, U+0130 i, U+0149 n, U+017F s, U+01F0 j, U+1E96 to U+1E9A h t w y a, U+1E9E ss, U+212A k, and the
  // ligatures U+FB00 to U+FB06.
  return character == 0xDF || character == 0x130 || character == 0x149 || character == 0x17F || character == 0x1F0 ||
         (character >= 0x1E96 && character <= 0x1E9A) || character == 0x1E9E || character == 0x212A ||
         (character >= 0xFB00 && character <= 0xFB06);
}

bool mayHoldAPIKey(std::string_view text) {
  if (text.find("AKIA") != npos || text.find("sk-") != npos || text.find("xox") != npos) return true;
  for (auto at = text.find("gh"); at != npos; at = text.find("gh", at + 1)) {
    if (text.size() > at + 3 && text[at + 3] == '_') return true;
  }
  return false;
}

bool mayHoldWebToken(std::string_view text) { return text.find("eyJ") != npos; }

bool mayHoldBearerToken(std::string_view text) {
  static constexpr std::string_view word = "bearer";
  return !std::ranges::search(text, word, {}, lowered).empty() || holdsFoldingCharacter(text);
}

bool mayHoldPassword(std::string_view text) {
  bool separated = false;
  for (auto at = text.find_first_of(":="); at != npos; at = text.find_first_of(":=", at + 1)) {
    if (mayAnnounceSecret(text.substr(0, at))) return true;
    separated = true;
  }
  return separated && holdsFoldingCharacter(text);
}

bool mayHoldCard(std::string_view text) {
  constexpr int fewestDigits = 13;
  int digits = 0;
  char former = ' ';
  for (const char c : text) {
    if (isDigit(c)) {
      if (++digits >= fewestDigits) return true;
    } else if ((c != ' ' && c != '-') || !isDigit(former)) {
      digits = 0;
    }
    former = c;
  }
  return anyBeyondAscii(text, [](char32_t code) { return u_charDigitValue(static_cast<UChar32>(code)) >= 0; });
}

bool mayHoldEmail(std::string_view text) {
  for (auto at = text.find('@'); at != npos; at = text.find('@', at + 1)) {
    if (at > 0 && isLocalPartCharacter(text[at - 1])) return true;
  }
  return false;
}

}  // namespace Nimbrel::SensitivePrefilter
