#include "Analysis/RuleMatching.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

Shot shotOf(std::string text, std::string name) {
  Shot shot;
  shot.ocr = std::move(text);
  shot.name = std::move(name);
  return shot;
}

bool matches(const AutomationRule& rule, const Shot& shot, const std::string& sourceTitle) {
  RuleSubject subject(shot, sourceTitle);
  return PreparedRule(rule).matches(subject);
}

const Shot invoice = shotOf("Your Invoice\nof March", "Bill 7.png");

TEST(RuleMatching, ARuleWithOnlyANameAppliesToNothing) {
  AutomationRule rule;
  rule.name = "invoice";
  rule.tag = "paid";
  EXPECT_FALSE(matches(rule, invoice, "Safari"));
}

TEST(RuleMatching, ConditionsOfBlanksAreNone) {
  EXPECT_FALSE(matches({.containsText = " \n", .source = "\t\u2028"}, invoice, " \n\t\u2028"));
}

TEST(RuleMatching, ADisabledRuleAppliesToNothing) {
  EXPECT_TRUE(matches({.containsText = "invoice"}, invoice, ""));
  EXPECT_FALSE(matches({.containsText = "invoice", .enabled = false}, invoice, ""));
}

TEST(RuleMatching, TheTextIsFoundInTextAndNameWhateverTheCase) {
  EXPECT_TRUE(matches({.containsText = " your INVOICE\n"}, invoice, ""));
  EXPECT_TRUE(matches({.containsText = "bill 7"}, invoice, ""));
  EXPECT_TRUE(matches({.containsText = "march\nbill"}, invoice, "")) << "a line feed stands between text and name";
  EXPECT_FALSE(matches({.containsText = "receipt"}, invoice, ""));
}

TEST(RuleMatching, TheSourceIsFoundInTheTitleWhateverTheCase) {
  EXPECT_TRUE(matches({.source = "safari"}, invoice, "Safari"));
  EXPECT_TRUE(matches({.source = " SAFARI "}, invoice, "My Safari Preview"));
  EXPECT_FALSE(matches({.source = "safari"}, invoice, ""));
}

TEST(RuleMatching, BothConditionsMustHold) {
  const AutomationRule rule{.containsText = "invoice", .source = "safari"};
  EXPECT_TRUE(matches(rule, invoice, "Safari"));
  EXPECT_FALSE(matches(rule, invoice, "Preview"));
  EXPECT_FALSE(matches(rule, shotOf("x", "y"), "Safari"));
}

TEST(RuleMatching, OnlyARuleThatIsOnAndHasAConditionCanMatch) {
  EXPECT_TRUE(PreparedRule({.containsText = "x"}).canMatch());
  EXPECT_TRUE(PreparedRule({.source = "x"}).canMatch());
  EXPECT_FALSE(PreparedRule({.containsText = "x", .enabled = false}).canMatch());
  EXPECT_FALSE(PreparedRule({.containsText = " \n", .source = "\t", .tag = "x"}).canMatch());
}

TEST(RuleMatching, OneSubjectAnswersManyRules) {
  RuleSubject subject(invoice, "Safari");
  EXPECT_TRUE(PreparedRule({.containsText = "INVOICE"}).matches(subject));
  EXPECT_FALSE(PreparedRule({.containsText = "receipt"}).matches(subject));
  EXPECT_TRUE(PreparedRule({.containsText = "bill", .source = "SAFARI"}).matches(subject));
  EXPECT_FALSE(PreparedRule({.containsText = "bill", .source = "preview"}).matches(subject));
}

}  // namespace
}  // namespace Nimbrel
