#include "Analysis/RuleMatching.h"

#include "Foundation/NameOrder.h"
#include "Foundation/Text.h"

namespace Nimbrel {

bool matches(const AutomationRule& rule, const Shot& shot, std::string_view sourceTitle) {
  if (!rule.enabled) return false;
  const auto words = Text::trimmedWithLineBreaks(rule.containsText);
  const auto source = Text::trimmedWithLineBreaks(rule.source);
  if (words.empty() && source.empty()) return false;
  if (!source.empty() && !NameOrder::containsIgnoringCase(sourceTitle, source)) return false;
  return words.empty() || NameOrder::containsIgnoringCase(shot.ocr + "\n" + shot.name, words);
}

}  // namespace Nimbrel
