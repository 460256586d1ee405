#pragma once

#include "Model/Models.h"
#include "Model/ProductivityModels.h"

#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace Nimbrel {

/// Remembers the shots on which the automation rules have nothing left to do. Rules run over all shots after every
/// batch of text, and looking through a hundred thousand texts takes seconds, while all but a few shots are as they
/// were: one pointer means one value. Main thread.
class RuleMemory {
 public:
  /// To be called before each pass: forgets all shots when the rules are others than at the last one or a project is
  /// gone that was there at its end, and those that nobody else holds in any case.
  void beginPass(const std::vector<AutomationRule>& rules, const std::vector<std::string>& projects);
  /// To be called after it, with the projects that it left.
  void endPass(std::vector<std::string> projects) { projects_ = std::move(projects); }

  [[nodiscard]] bool isSettled(const ShotPtr& shot) const { return settled_.contains(shot); }
  void settle(const ShotPtr& shot) { settled_.insert(shot); }
  /// To be called instead of a pass when there is no rule.
  void forgetAll() { settled_.clear(); }

 private:
  std::vector<AutomationRule> rules_;
  std::vector<std::string> projects_;
  std::unordered_set<ShotPtr> settled_;
};

}  // namespace Nimbrel
