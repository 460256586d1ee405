#include "Store/RuleEffect.h"

#include "Foundation/Text.h"

#include <utility>

namespace Nimbrel {

namespace {

/// What the user wrote in a field of a rule, as a tag can hold it.
std::string wordsOf(const std::string& field) { return std::string(Text::trimmedWithLineBreaks(withoutCommas(field))); }

}  // namespace

RuleEffect withRule(RuleEffect effect, const AutomationRule& rule, const Shot& shot) {
  if (auto tag = wordsOf(rule.tag); !tag.empty()) effect.tags.push_back(std::move(tag));
  if (auto project = wordsOf(rule.project); !project.empty()) {
    effect.tags.push_back(projectTag(project));
    effect.projects.push_back(std::move(project));
  }
  if (rule.favorite && !shot.favorite) effect.favorite = true;
  if (rule.fileToLibrary && !shot.filed) effect.file = true;
  return effect;
}

}  // namespace Nimbrel
