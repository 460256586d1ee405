#include "Foundation/Text.h"

#include "Foundation/Utf8.h"

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utext.h>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace Nimbrel::Text {

namespace {

bool isLineBreak(char32_t code) {
  return (code >= 0x0A && code <= 0x0D) || code == 0x85 || code == 0x2028 || code == 0x2029;
}

bool isWhiteSpace(char32_t code) { return isHorizontalSpace(code) || isLineBreak(code); }

/// No line break and no beginning of one: what nearly all texts are made of.
bool isInnerAscii(char c) { return c >= 0x20 && static_cast<unsigned char>(c) < 0x80; }

template <class Test>
std::string_view without(std::string_view text, Test isDropped) {
  while (!text.empty()) {
    const auto first = Utf8::first(text);
    if (!first.isValid || !isDropped(first.code)) break;
    text.remove_prefix(first.length);
  }
  while (!text.empty()) {
    const auto last = Utf8::last(text);
    if (!last.isValid || !isDropped(last.code)) break;
    text.remove_suffix(last.length);
  }
  return text;
}

icu::BreakIterator* characterBreaks() {
  thread_local const auto breaks = [] {
    UErrorCode status = U_ZERO_ERROR;
    return std::unique_ptr<icu::BreakIterator>(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  }();
  return breaks.get();
}

/// Calls with the place behind each character as a reader counts them, until the call returns false.
template <class Visit>
void forEachCharacterEnd(std::string_view text, Visit visit) {
  auto* breaks = characterBreaks();
  if (breaks == nullptr) {
    for (std::size_t end = 0; end < text.size();) {
      end += Utf8::first(text.substr(end)).length;
      if (!visit(end)) return;
    }
    return;
  }
  UErrorCode status = U_ZERO_ERROR;
  UText view = UTEXT_INITIALIZER;
  utext_openUTF8(&view, text.data(), static_cast<std::int64_t>(text.size()), &status);
  breaks->setText(&view, status);
  if (U_SUCCESS(status)) {
    breaks->first();
    for (auto end = breaks->next(); end != icu::BreakIterator::DONE; end = breaks->next()) {
      if (!visit(static_cast<std::size_t>(end))) break;
    }
    // Begun anew, the iterator keeps nothing of a text that may be a passphrase.
    breaks->setText(&view, status);
  }
  utext_close(&view);
}

bool isAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isPrintableAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= 0x20 && c < 0x7F; });
}

}  // namespace

bool isHorizontalSpace(char32_t character) {
  return character == '\t' || u_charType(static_cast<UChar32>(character)) == U_SPACE_SEPARATOR;
}

std::string_view trimmed(std::string_view text) { return without(text, isHorizontalSpace); }

std::string_view trimmedWithLineBreaks(std::string_view text) { return without(text, isWhiteSpace); }

std::string_view trimmedOf(std::string_view text, std::u32string_view characters) {
  return without(text, [&](char32_t code) { return characters.find(code) != std::u32string_view::npos; });
}

std::vector<std::string_view> lines(std::string_view text, std::size_t most) {
  std::vector<std::string_view> result;
  std::size_t start = 0;
  const auto endLine = [&](std::size_t end) {
    if (end > start) result.push_back(text.substr(start, end - start));
  };
  for (std::size_t position = 0; position < text.size() && result.size() < most;) {
    if (isInnerAscii(text[position])) {
      ++position;
      continue;
    }
    const auto character = Utf8::first(text.substr(position));
    if (character.isValid && isLineBreak(character.code)) {
      endLine(position);
      start = position + character.length;
    }
    position += character.length;
  }
  if (result.size() < most) endLine(text.size());
  return result;
}

std::size_t wordCount(std::string_view text, std::size_t most) {
  std::size_t count = 0;
  bool inWord = false;
  while (!text.empty() && count < most) {
    const auto character = Utf8::first(text);
    const bool isSpace = character.isValid && isWhiteSpace(character.code);
    if (!isSpace && !inWord) ++count;
    inWord = !isSpace;
    text.remove_prefix(character.length);
  }
  return count;
}

std::size_t characterCount(std::string_view text) {
  if (isPrintableAscii(text)) return text.size();
  std::size_t count = 0;
  forEachCharacterEnd(text, [&](std::size_t) {
    ++count;
    return true;
  });
  return count;
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
  if (count == 0) return {};
  // A character has at least one byte.
  if (text.size() <= count) return text;
  std::size_t end = 0;
  forEachCharacterEnd(text, [&](std::size_t characterEnd) {
    end = characterEnd;
    return --count > 0;
  });
  return text.substr(0, end);
}

std::string_view fittingIn(std::size_t bytes, std::string_view text) {
  if (text.size() <= bytes) return text;
  std::size_t end = 0;
  forEachCharacterEnd(text, [&](std::size_t characterEnd) {
    if (characterEnd > bytes) return false;
    end = characterEnd;
    return true;
  });
  if (end > 0) return text.substr(0, end);
  for (auto next = Utf8::first(text).length; next <= bytes; next += Utf8::first(text.substr(next)).length) end = next;
  return text.substr(0, end);
}

std::vector<std::string> split(std::string_view text, char separator, EmptyPieces emptyPieces) {
  std::vector<std::string> pieces;
  for (std::size_t start = 0; start <= text.size();) {
    const auto end = std::min(text.find(separator, start), text.size());
    if (end > start || emptyPieces == EmptyPieces::Keep) pieces.emplace_back(text.substr(start, end - start));
    start = end + 1;
  }
  return pieces;
}

std::string joined(const std::vector<std::string>& pieces, char separator) {
  std::string text;
  for (const auto& piece : pieces) {
    if (&piece != &pieces.front()) text += separator;
    text += piece;
  }
  return text;
}

bool isJoined(std::string_view text, const std::vector<std::string>& pieces, char separator) {
  for (const auto& piece : pieces) {
    if (&piece != &pieces.front()) {
      if (!text.starts_with(separator)) return false;
      text.remove_prefix(1);
    }
    if (!text.starts_with(piece)) return false;
    text.remove_prefix(piece.size());
  }
  return text.empty();
}

std::u16string toUtf16(std::string_view text) {
  // No UTF-8 text has more UTF-16 units than bytes.
  std::u16string converted(text.size(), u'\0');
  std::int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8WithSub(converted.data(), static_cast<std::int32_t>(converted.size()), &length, text.data(),
                       static_cast<std::int32_t>(text.size()), 0xFFFD, nullptr, &status);
  converted.resize(U_SUCCESS(status) ? static_cast<std::size_t>(length) : 0);
  return converted;
}

std::string toUtf8(std::u16string_view text) {
  std::string converted(text.size() * 3, '\0');
  std::int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF8WithSub(converted.data(), static_cast<std::int32_t>(converted.size()), &length, text.data(),
                     static_cast<std::int32_t>(text.size()), 0xFFFD, nullptr, &status);
  converted.resize(U_SUCCESS(status) ? static_cast<std::size_t>(length) : 0);
  return converted;
}

std::string lowered(std::string_view text) {
  if (isAscii(text)) return asciiLowered(text);
  std::string result;
  icu::StringByteSink<std::string> sink(&result);
  UErrorCode status = U_ZERO_ERROR;
  icu::CaseMap::utf8ToLower("", 0, icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())), sink, nullptr,
                            status);
  return result;
}

std::string asciiLowered(std::string_view text) {
  std::string lowered(text);
  for (char& c : lowered) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lowered;
}

}  // namespace Nimbrel::Text
