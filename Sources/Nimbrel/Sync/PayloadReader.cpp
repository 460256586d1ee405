#include "Sync/PayloadReader.h"

#include "Sync/Base64Text.h"

#include <QUtf8StringView>

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace Nimbrel {

namespace {

constexpr int deepest = 512;

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Without a way out of the loop, so that the compiler can look at many characters at once.

/// ASCII without control characters.
bool isPlain(std::string_view text) {
  std::uint8_t all = 1;
  for (const char c : text) all &= static_cast<std::uint8_t>(c >= 0x20 && static_cast<std::uint8_t>(c) < 0x80);
  return all != 0;
}

bool holdsControl(std::string_view text) {
  std::uint8_t any = 0;
  for (const char c : text) any |= static_cast<std::uint8_t>(static_cast<std::uint8_t>(c) < 0x20);
  return any != 0;
}

bool isUtf8(std::string_view text) {
  return QUtf8StringView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8();
}

/// Of the escapes with one letter; 0 for all others.
char meaningOf(char letter) {
  switch (letter) {
    case '"':
    case '\\':
    case '/':
      return letter;
    case 'b':
      return '\b';
    case 'f':
      return '\f';
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    default:
      return 0;
  }
}

}  // namespace

std::string_view PayloadReader::rest() const {
  return std::string_view(bytes_.data(), bytes_.size()).substr(position_);
}

void PayloadReader::skipSpace() {
  while (position_ < bytes_.size() && isSpace(bytes_[position_])) ++position_;
}

bool PayloadReader::isAtEnd() {
  skipSpace();
  return position_ == bytes_.size();
}

bool PayloadReader::take(char character) {
  skipSpace();
  if (!rest().starts_with(character)) return false;
  ++position_;
  return true;
}

bool PayloadReader::takeWord(std::string_view word) {
  if (!rest().starts_with(word)) return false;
  position_ += word.size();
  return true;
}

bool PayloadReader::object(const Member& member) {
  if (!take('{')) return false;
  if (take('}')) return true;
  do {
    const auto key = string();
    if (!key || !take(':') || !member(*key)) return false;
  } while (take(','));
  return take('}');
}

bool PayloadReader::list() {
  if (!take('[')) return false;
  if (take(']')) return true;
  do {
    if (!skip()) return false;
  } while (take(','));
  return take(']');
}

bool PayloadReader::skip() {
  if (depth_ == deepest || isAtEnd()) return false;
  ++depth_;
  const auto isRead = [&] {
    switch (bytes_[position_]) {
      case '{':
        return object([this](std::string_view) { return skip(); });
      case '[':
        return list();
      case '"':
        return string().has_value();
      case 't':
        return takeWord("true");
      case 'f':
        return takeWord("false");
      case 'n':
        return takeWord("null");
      default:
        return numberText().has_value();
    }
  }();
  --depth_;
  return isRead;
}

bool PayloadReader::takeDigits() {
  const auto start = position_;
  while (position_ < bytes_.size() && isDigit(bytes_[position_])) ++position_;
  return position_ > start;
}

std::optional<std::string_view> PayloadReader::numberText() {
  skipSpace();
  const auto text = rest();
  const auto start = position_;
  takeWord("-");
  // A zero at the front stands alone.
  if (!takeWord("0") && !takeDigits()) return std::nullopt;
  if (takeWord(".") && !takeDigits()) return std::nullopt;
  if (takeWord("e") || takeWord("E")) {
    if (!takeWord("-")) takeWord("+");
    if (!takeDigits()) return std::nullopt;
  }
  return text.substr(0, position_ - start);
}

std::optional<double> PayloadReader::number() {
  const auto text = numberText();
  if (!text) return std::nullopt;
  double number = 0;
  const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), number);
  return error == std::errc() ? std::optional(number) : std::nullopt;
}

std::optional<std::string_view> PayloadReader::string() {
  if (!take('"')) return std::nullopt;
  const auto length = rest().find('"');
  if (length == std::string_view::npos) return std::nullopt;
  const auto text = rest().substr(0, length);
  if (text.find('\\') != std::string_view::npos) return unescaped(position_ + length);
  if (!isPlain(text) && (holdsControl(text) || !isUtf8(text))) return std::nullopt;
  position_ += length + 1;
  return text;
}

std::optional<std::string_view> PayloadReader::plainBase64() {
  const auto start = position_;
  if (take('"')) {
    const auto text = rest().substr(0, rest().find('"'));
    if (text.size() < rest().size() && isBase64(text)) {
      position_ += text.size() + 1;
      return text;
    }
  }
  position_ = start;
  return std::nullopt;
}

/// The rest of a text whose next quote stands where it is said to. What it becomes is never longer, so it is written
/// over what it was.
std::optional<std::string_view> PayloadReader::unescaped(std::size_t quote) {
  const auto start = position_;
  auto end = start;
  while (true) {
    // A quote that belongs to an escape is not the last.
    if (quote < position_) quote = position_ + std::min(rest().find('"'), rest().size());
    if (quote == bytes_.size()) return std::nullopt;
    const auto ahead = rest().substr(0, quote - position_);
    const auto piece = ahead.substr(0, ahead.find('\\'));
    if (holdsControl(piece)) return std::nullopt;
    std::memmove(bytes_.data() + end, piece.data(), piece.size());
    end += piece.size();
    position_ += piece.size();
    if (position_ == quote) break;
    const auto written = unescape(end);
    if (written == 0) return std::nullopt;
    end += written;
  }
  ++position_;
  const auto text = std::string_view(bytes_.data(), bytes_.size()).substr(start, end - start);
  return isUtf8(text) ? std::optional(text) : std::nullopt;
}

/// Takes one escape and writes what it means to `end`; returns the length of that, 0 when it means nothing.
std::size_t PayloadReader::unescape(std::size_t end) {
  ++position_;
  if (rest().empty()) return 0;
  const char letter = bytes_[position_++];
  if (letter != 'u') {
    const char meaning = meaningOf(letter);
    if (meaning != 0) bytes_[end] = meaning;
    return meaning != 0 ? 1 : 0;
  }
  auto code = codeUnit();
  if (!code) return 0;
  if (U16_IS_LEAD(*code)) {
    const auto trail = takeWord("\\u") ? codeUnit() : std::nullopt;
    if (!trail || !U16_IS_TRAIL(*trail)) return 0;
    code = U16_GET_SUPPLEMENTARY(*code, *trail);
  }
  if (U_IS_SURROGATE(*code)) return 0;
  std::size_t length = 0;
  U8_APPEND_UNSAFE(bytes_.data() + end, length, *code);
  return length;
}

/// Four hexadecimal digits.
std::optional<char32_t> PayloadReader::codeUnit() {
  const auto digits = rest().substr(0, 4);
  std::uint32_t code = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
  if (digits.size() < 4 || error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  position_ += digits.size();
  return code;
}

}  // namespace Nimbrel
