#include "Analysis/SensitivePrefilter.h"

#include "Foundation/Utf8.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>

namespace Nimbrel::SensitivePrefilter {

namespace {

constexpr char lowered(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; }
constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isLetter(char c) { return lowered(c) >= 'a' && lowered(c) <= 'z'; }
constexpr bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }
constexpr bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr bool isLocalPartCharacter(char c) {
  return isLetter(c) || isDigit(c) || c == '.' || c == '_' || c == '%' || c == '+' || c == '-';
}

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

/// Characters at which one of the expressions may be told; all others are passed over. Each stands as late in what is
/// sought as it can, where it is rarer than the letters before it.
enum class Trigger : unsigned char { None, Key, Token, Bearer, Separator, Digit, At, BeyondAscii };

constexpr std::array<Trigger, 256> triggers = [] {
  std::array<Trigger, 256> table{};
  for (const unsigned char c : std::string_view("K-_x")) table[c] = Trigger::Key;
  table['J'] = Trigger::Token;
  table['B'] = table['b'] = Trigger::Bearer;
  table[':'] = table['='] = Trigger::Separator;
  for (unsigned char c = '0'; c <= '9'; ++c) table[c] = Trigger::Digit;
  table['@'] = Trigger::At;
  for (std::size_t c = 0x80; c < table.size(); ++c) table[c] = Trigger::BeyondAscii;
  return table;
}();

/// One pass over a text.
class Look {
 public:
  explicit Look(std::string_view text) : text_(text) {}

  [[nodiscard]] SoughtSet possible() {
    for (std::size_t at = 0; at < text_.size();) {
      const auto trigger = triggers[static_cast<unsigned char>(text_[at])];
      at = trigger == Trigger::None ? at + 1 : behind(trigger, at);
    }
    if (folds_) {
      note(Sought::bearerToken);
      if (separated_) note(Sought::password);
    }
    return possible_;
  }

 private:
  void note(Sought sought) { possible_.set(static_cast<std::size_t>(sought)); }
  void noteIf(bool is, Sought sought) {
    if (is) note(sought);
  }
  [[nodiscard]] std::string_view until(std::size_t at) const { return text_.substr(0, at); }

  /// Looks at the place of a trigger, and returns where to go on.
  std::size_t behind(Trigger trigger, std::size_t at) {
    switch (trigger) {
      case Trigger::Key:
        noteIf(isInAPIKey(at), Sought::apiKey);
        break;
      case Trigger::Token:
        noteIf(until(at).ends_with("ey"), Sought::webToken);
        break;
      case Trigger::Bearer:
        noteIf(isBearer(at), Sought::bearerToken);
        break;
      case Trigger::Separator:
        separated_ = true;
        noteIf(mayAnnounceSecret(until(at)), Sought::password);
        break;
      case Trigger::At:
        noteIf(at > 0 && isLocalPartCharacter(text_[at - 1]), Sought::email);
        break;
      case Trigger::Digit:
        return behindDigits(at);
      case Trigger::BeyondAscii:
        return behindCharacter(at);
      case Trigger::None:
        break;
    }
    return at + 1;
  }

  [[nodiscard]] bool isInAPIKey(std::size_t at) const {
    const auto before = until(at);
    switch (text_[at]) {
      case 'K':
        return before.ends_with('A');
      case '-':
        return before.ends_with("sk");
      case '_':
        return before.size() >= 3 && before.substr(before.size() - 3).starts_with("gh");
      default:
        return before.ends_with("xo");
    }
  }

  [[nodiscard]] bool isBearer(std::size_t at) const {
    static constexpr std::string_view word = "bearer";
    return std::ranges::equal(text_.substr(at, word.size()), word, {}, lowered);
  }

  /// Numbers of cards may be cut into groups by single blanks and dashes.
  std::size_t behindDigits(std::size_t at) {
    constexpr int fewestDigits = 13;
    int digits = 0;
    while (at < text_.size() && isDigit(text_[at])) {
      ++digits;
      ++at;
      const bool isGap = at + 1 < text_.size() && (text_[at] == ' ' || text_[at] == '-') && isDigit(text_[at + 1]);
      if (isGap) ++at;
    }
    noteIf(digits >= fewestDigits, Sought::card);
    return at;
  }

  std::size_t behindCharacter(std::size_t at) {
    const auto character = Utf8::first(text_.substr(at));
    if (character.isValid) {
      noteIf(u_charDigitValue(static_cast<UChar32>(character.code)) >= 0, Sought::card);
      folds_ = folds_ || foldsToAsciiLetters(character.code);
    }
    return at + character.length;
  }

  std::string_view text_;
  SoughtSet possible_;
  bool separated_ = false;
  bool folds_ = false;
};

}  // namespace

bool foldsToAsciiLetters(char32_t character) {
  // U+00DF ss, U+0130 i, U+0149 n, U+017F s, U+01F0 j, U+1E96 to U+1E9A h t w y a, U+1E9E ss, U+212A k, and the
  // ligatures U+FB00 to U+FB06.
  return character == 0xDF || character == 0x130 || character == 0x149 || character == 0x17F || character == 0x1F0 ||
         (character >= 0x1E96 && character <= 0x1E9A) || character == 0x1E9E || character == 0x212A ||
         (character >= 0xFB00 && character <= 0xFB06);
}

SoughtSet possibleIn(std::string_view text) { return Look(text).possible(); }

}  // namespace Nimbrel::SensitivePrefilter
