#include "Foundation/Utf8.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

// The library decodes by macros that are written in C.
#pragma GCC diagnostic ignored "-Wold-style-cast"

namespace Nimbrel::Utf8 {

namespace {

constexpr std::size_t longestCharacter = 4;

Character character(UChar32 code, std::size_t length) {
  return {code < 0 ? U'\0' : static_cast<char32_t>(code), length, code >= 0};
}

}  // namespace

Character first(std::string_view text) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  const auto end = static_cast<std::int32_t>(std::min(text.size(), longestCharacter));
  std::int32_t next = 0;
  UChar32 code = 0;
  U8_NEXT(bytes, next, end, code);
  return character(code, static_cast<std::size_t>(next));
}

Character last(std::string_view text) {
  const auto tail = text.substr(text.size() - std::min(text.size(), longestCharacter));
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(tail.data());
  auto start = static_cast<std::int32_t>(tail.size());
  UChar32 code = 0;
  U8_PREV(bytes, 0, start, code);
  return character(code, tail.size() - static_cast<std::size_t>(start));
}

}  // namespace Nimbrel::Utf8
