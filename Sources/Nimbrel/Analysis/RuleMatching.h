#pragma once

#include "Foundation/NameOrder.h"
#include "Model/Models.h"
#include "Model/ProductivityModels.h"

#include <optional>
#include <string>
#include <utility>

namespace Nimbrel {

/// What the rules look at in a shot, made ready for a search once however many rules there are, and only when one asks.
/// Borrows the shot; one thread at a time.
class RuleSubject {
 public:
  /// The title of the shot's source is empty when it is no application.
  RuleSubject(const Shot& shot, std::string sourceTitle) : shot_(shot), sourceTitle_(std::move(sourceTitle)) {}

  /// The text, a line feed and the name.
  [[nodiscard]] const NameOrder::FoldedText& text();
  [[nodiscard]] const NameOrder::FoldedText& source();

 private:
  const Shot& shot_;
  std::string sourceTitle_;
  std::optional<NameOrder::FoldedText> text_;
  std::optional<NameOrder::FoldedText> source_;
};

/// A rule made ready to be held against many shots. A plain value.
class PreparedRule {
 public:
  explicit PreparedRule(AutomationRule rule);

  [[nodiscard]] const AutomationRule& rule() const { return rule_; }
  /// False for a rule that is switched off or has no condition: it applies to no shot.
  [[nodiscard]] bool canMatch() const { return rule_.enabled && (words_ || source_); }
  [[nodiscard]] bool asksForSource() const { return source_.has_value(); }

  /// Whether the rule applies to the shot.
  [[nodiscard]] bool matches(RuleSubject& subject) const;

 private:
  AutomationRule rule_;
  std::optional<NameOrder::FoldedText> words_;   ///< absent when the text does not matter
  std::optional<NameOrder::FoldedText> source_;  ///< absent when the source does not matter
};

}  // namespace Nimbrel
