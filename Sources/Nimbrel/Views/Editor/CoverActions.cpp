#include "Views/Editor/CoverActions.h"

#include "Analysis/Sensitive.h"

#include <algorithm>
#include <string>

namespace Nimbrel::CoverActions {

void coverAllText(MarkList& marks, std::span<const TextBlock> blocks) {
  for (const auto& block : blocks) marks.addRedaction(block.rect);
}

void coverSensitive(MarkList& marks, std::span<const TextBlock> blocks) {
  std::string text;
  for (const auto& block : blocks) {
    if (!text.empty()) text += '\n';
    text += block.text;
  }
  const auto secrets = Sensitive::matchesIn(text);
  for (const auto& block : blocks) {
    const bool holdsOne = std::ranges::any_of(
        secrets, [&block](const std::string& secret) { return block.text.find(secret) != std::string::npos; });
    if (holdsOne) marks.addRedaction(block.rect);
  }
}

}  // namespace Nimbrel::CoverActions
