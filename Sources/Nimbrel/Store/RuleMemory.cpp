#include "Store/RuleMemory.h"

#include <algorithm>

namespace Nimbrel {

void RuleMemory::beginPass(const std::vector<AutomationRule>& rules, const std::vector<std::string>& projects) {
  // A project that was taken off the list is put back by the rule that names it.
  const bool lacksProject = std::ranges::any_of(
      projects_, [&](const std::string& project) { return std::ranges::find(projects, project) == projects.end(); });
  if (rules != rules_ || lacksProject) {
    settled_.clear();
  } else {
    std::erase_if(settled_, [](const ShotPtr& shot) { return shot.use_count() == 1; });
  }
  rules_ = rules;
}

}  // namespace Nimbrel
