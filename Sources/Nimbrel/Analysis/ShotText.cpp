#include "Analysis/ShotText.h"

#include "Foundation/Text.h"

#include <algorithm>

namespace Nimbrel {

ShotText::ShotText(std::string_view recognised) : lowered_(Text::lowered(recognised)), phrases_(lowered_) {}

std::vector<std::string_view> ShotText::lines(std::size_t most) const { return Text::lines(lowered_, most); }

bool holdsAny(std::string_view lowered, PhraseList list) {
  return std::ranges::any_of(phrasesOf(list),
                             [&](std::string_view phrase) { return lowered.find(phrase) != std::string_view::npos; });
}

}  // namespace Nimbrel
