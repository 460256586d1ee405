#pragma once

#include "Model/Models.h"
#include "Model/ProductivityModels.h"
#include "Store/Tags.h"

#include <string>
#include <vector>

namespace Nimbrel {

/// What the rules that match a shot ask for it. A plain value.
struct RuleEffect {
  Tags tags;                          ///< those it is to have, whether or not it has them
  std::vector<std::string> projects;  ///< the projects that the rules name
  bool favorite = false;              ///< it is to become a favourite
  bool file = false;                  ///< it is to leave the Inbox
};

/// The effect of one rule more. `effect` is that of the rules before it.
[[nodiscard]] RuleEffect withRule(RuleEffect effect, const AutomationRule& rule, const Shot& shot);

}  // namespace Nimbrel
