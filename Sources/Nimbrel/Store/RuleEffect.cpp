#include "Store/RuleEffect.h"

#include "Foundation/Text.h"

#include <algorithm>

namespace Nimbrel {

RuleEffect withRule(RuleEffect effect, const AutomationRule& rule, const Shot& shot) {
  effect.tags = withTag(std::move(effect.tags), Text::trimmedWithLineBreaks(rule.tag));
  const auto project = Text::trimmedWithLineBreaks(rule.project);
  if (!project.empty()) {
    effect.tags = withTag(std::move(effect.tags), projectTag(project));
    effect.projects.emplace_back(project);
  }
  if (rule.favorite && !shot.favorite) effect.favorite = true;
  if (rule.fileToLibrary && !shot.filed) effect.file = true;
  return effect;
}

std::vector<std::string> withTag(std::vector<std::string> tags, std::string_view tag) {
  for (auto& piece : Text::split(tag, ',', Text::EmptyPieces::Drop)) {
    if (std::ranges::find(tags, piece) == tags.end()) tags.push_back(std::move(piece));
  }
  return tags;
}

std::string projectTag(std::string_view project) { return std::string(projectTagPrefix) + std::string(project); }

}  // namespace Nimbrel
