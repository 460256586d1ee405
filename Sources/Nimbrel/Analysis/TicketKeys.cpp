#include "Analysis/TicketKeys.h"

#include "Foundation/Pattern.h"
#include "Foundation/Text.h"

namespace Nimbrel {

namespace {

constexpr auto npos = std::string_view::npos;

constexpr bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }
// Beyond ASCII there are characters that are the same as a letter when case does not count, and other scripts' digits.
constexpr bool mayBeLetter(char c) { return (c >= 'a' && c <= 'z') || !isAscii(c); }
constexpr bool mayBeDigit(char c) { return (c >= '0' && c <= '9') || !isAscii(c); }

bool mayBeKeyAt(std::string_view text, std::size_t hyphen) {
  return hyphen >= 2 && hyphen + 1 < text.size() && mayBeLetter(text[hyphen - 2]) && mayBeLetter(text[hyphen - 1]) &&
         mayBeDigit(text[hyphen + 1]);
}

}  // namespace

bool holdsTicketKey(std::string_view lowered) {
  static const auto pattern = Pattern::constant(ticketKeyExpression);
  for (auto hyphen = lowered.find('-'); hyphen != npos; hyphen = lowered.find('-', hyphen + 1)) {
    if (!mayBeKeyAt(lowered, hyphen)) continue;
    // A key never spans lines: the one around the hyphen decides, and the search goes on after it.
    const auto before = lowered.rfind('\n', hyphen);
    const auto start = before == npos ? 0 : before + 1;
    const auto line = lowered.substr(start, lowered.find('\n', hyphen) - start);
    if (pattern.isIn(Text::toUtf16(line))) return true;
    hyphen = start + line.size() - 1;
  }
  return false;
}

}  // namespace Nimbrel
