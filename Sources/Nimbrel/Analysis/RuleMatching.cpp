#include "Analysis/RuleMatching.h"

#include "Foundation/Text.h"

namespace Nimbrel {

namespace {

std::optional<NameOrder::FoldedText> condition(const std::string& field) {
  const auto words = Text::trimmedWithLineBreaks(field);
  if (words.empty()) return std::nullopt;
  return NameOrder::FoldedText(words);
}

}  // namespace

const NameOrder::FoldedText& RuleSubject::text() {
  if (!text_) text_.emplace(shot_.ocr + "\n" + shot_.name);
  return *text_;
}

const NameOrder::FoldedText& RuleSubject::source() {
  if (!source_) source_.emplace(sourceTitle_);
  return *source_;
}

PreparedRule::PreparedRule(AutomationRule rule)
    : rule_(std::move(rule)), words_(condition(rule_.containsText)), source_(condition(rule_.source)) {}

bool PreparedRule::matches(RuleSubject& subject) const {
  if (!canMatch()) return false;
  if (source_ && !subject.source().contains(*source_)) return false;
  return !words_ || subject.text().contains(*words_);
}

}  // namespace Nimbrel
