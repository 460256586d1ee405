#include "Analysis/WebContent.h"

#include "Foundation/Pattern.h"
#include "Foundation/Text.h"

#include <algorithm>
#include <array>

namespace Nimbrel {

namespace {

constexpr std::size_t addressLines = 4;
constexpr std::size_t fewestShopPhrases = 2;
constexpr std::size_t fewestFooterPhrases = 3;
constexpr std::u32string_view addressFrame = U"|·•<>[]()";
constexpr std::array<std::string_view, 2> schemes{"https://", "http://"};

constexpr bool isLetter(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool isHostCharacter(char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '.' || c == '-'; }

std::string_view withoutScheme(std::string_view address) {
  for (const auto scheme : schemes) {
    if (address.starts_with(scheme)) return address.substr(scheme.size());
  }
  return address;
}

/// What the expression asks of all before the first slash.
bool beginsLikeAddress(std::string_view text) {
  const auto host = text.substr(0, text.find('/'));
  const auto lastDot = host.rfind('.');
  return lastDot != std::string_view::npos && lastDot > 0 && host.size() >= lastDot + 3 &&
         std::ranges::all_of(host, isHostCharacter) && std::ranges::all_of(host.substr(lastDot + 1), isLetter);
}

bool isAddress(std::string_view line) {
  static const auto pattern = Pattern::constant(uR"(^[a-z0-9.-]+\.[a-z]{2,}(/\S*)?$)");
  const auto address = withoutScheme(Text::trimmedOf(Text::trimmedWithLineBreaks(line), addressFrame));
  return beginsLikeAddress(address) && pattern.isIn(Text::toUtf16(address));
}

bool holdsPrice(const ShotText& text) {
  static const auto pattern = Pattern::constant(uR"([$€£₹]\s?\d|\d+[.,]\d{2})");
  return pattern.isIn(Text::toUtf16(text.lowered()));
}

}  // namespace

bool looksLikeWebContent(const ShotText& text) {
  if (std::ranges::any_of(text.lines(addressLines), isAddress)) return true;
  if (text.phrases().count(PhraseList::shop) >= fewestShopPhrases && holdsPrice(text)) return true;
  return text.phrases().count(PhraseList::siteFooter) >= fewestFooterPhrases;
}

}  // namespace Nimbrel
