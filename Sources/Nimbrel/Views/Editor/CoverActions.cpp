#include "Views/Editor/CoverActions.h"

#include "Analysis/Sensitive.h"
#include "Foundation/Text.h"

#include <algorithm>
#include <string>
#include <vector>

namespace Nimbrel::CoverActions {

void coverAllText(MarkList& marks, std::span<const TextBlock> blocks) {
  for (const auto& block : blocks) marks.addRedaction(block.rect);
}

void coverSensitive(MarkList& marks, std::span<const TextBlock> blocks) {
  std::vector<std::string> lines;
  for (const auto& block : blocks) lines.push_back(block.text);
  const auto secrets = Sensitive::matchesIn(Text::joined(lines, '\n'));
  for (const auto& block : blocks) {
    const bool holdsOne = std::ranges::any_of(
        secrets, [&block](const std::string& secret) { return block.text.find(secret) != std::string::npos; });
    if (holdsOne) marks.addRedaction(block.rect);
  }
}

}  // namespace Nimbrel::CoverActions
