#pragma once

#include "Model/Models.h"
#include "Model/ProductivityModels.h"

#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// What the rules that match a shot ask for it. A plain value.
struct RuleEffect {
  std::vector<std::string> tags;      ///< the shot's, and behind them those it lacks
  std::vector<std::string> projects;  ///< the projects that the rules name
  bool favorite = false;              ///< it is to become a favourite
  bool file = false;                  ///< it is to leave the Inbox
};

/// The effect of one rule more. `effect` is that of the rules before it, or one with the tags of the shot alone.
[[nodiscard]] RuleEffect withRule(RuleEffect effect, const AutomationRule& rule, const Shot& shot);

/// The tags with one more behind them, unless they hold it. What the catalogue reads back as two tags, since it has a
/// comma inside, is two tags from the start: it would be missed, and added again, for ever.
[[nodiscard]] std::vector<std::string> withTag(std::vector<std::string> tags, std::string_view tag);

/// The tag that puts a shot into a project.
[[nodiscard]] std::string projectTag(std::string_view project);

}  // namespace Nimbrel
