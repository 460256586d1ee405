#include "Foundation/Pattern.h"

#include <gtest/gtest.h>

#include <string>

namespace Nimbrel {
namespace {

using Ranges = std::vector<TextRange>;

TEST(Pattern, RangesCountInUtf16Units) {
  const auto pattern = Pattern::compile(u"b+");
  ASSERT_TRUE(pattern);
  EXPECT_EQ(pattern->matches(u"\U0001F600bb ab"), (Ranges{{2, 2}, {6, 1}}));
}

TEST(Pattern, AnInvalidExpressionDoesNotCompile) { EXPECT_FALSE(Pattern::compile(u"(a")); }

TEST(Pattern, AnEmptyTextHasNoMatch) { EXPECT_TRUE(Pattern::compile(u"a")->matches(u"").empty()); }

TEST(Pattern, ACatastrophicInputEndsWithoutAMatch) {
  const auto pattern = Pattern::compile(u"(a+)+$");
  EXPECT_TRUE(pattern->matches(std::u16string(60, u'a') + u"b").empty());
}

TEST(Pattern, LinesAfterACatastrophicOneAreSearchedAllTheSame) {
  const auto pattern = Pattern::compile(u"(?:a+)+b|needle");
  const std::u16string text = u"needle\n" + std::u16string(60, u'a') + u"\nneedle";
  EXPECT_EQ(pattern->matches(text), (Ranges{{0, 6}, {68, 6}}));
}

TEST(Pattern, IsInATextThatHoldsAMatch) {
  const auto pattern = Pattern::constant(u"b+");
  EXPECT_TRUE(pattern.isIn(u"\U0001F600bb ab"));
  EXPECT_FALSE(pattern.isIn(u"aaa"));
  EXPECT_FALSE(pattern.isIn(u""));
}

TEST(Pattern, IsNotInACatastrophicInput) {
  EXPECT_FALSE(Pattern::constant(u"(a+)+$").isIn(std::u16string(60, u'a') + u"b"));
}

TEST(Pattern, IsInATextWhoseMatchFollowsACatastrophicLine) {
  const auto pattern = Pattern::constant(u"(?:a+)+b|needle");
  EXPECT_TRUE(pattern.isIn(std::u16string(60, u'a') + u"\nneedle"));
  EXPECT_FALSE(pattern.isIn(std::u16string(60, u'a') + u"\nnothing"));
}

TEST(Pattern, AConstantThatIsNotValidMatchesNothing) {
  const auto pattern = Pattern::constant(u"(a");
  EXPECT_FALSE(pattern.isIn(u"(a"));
  EXPECT_TRUE(pattern.matches(u"(a").empty());
}

TEST(Pattern, LoneSurrogatesAreMatchedAround) {
  const auto pattern = Pattern::compile(u"a");
  const std::u16string text{u'a', char16_t{0xD800}, u'a'};
  EXPECT_EQ(pattern->matches(text), (Ranges{{0, 1}, {2, 1}}));
}

TEST(TextRange, IntersectsWhenACharacterIsShared) {
  EXPECT_TRUE((TextRange{0, 3}).intersects({2, 3}));
  EXPECT_FALSE((TextRange{0, 3}).intersects({3, 3}));
}

}  // namespace
}  // namespace Nimbrel
