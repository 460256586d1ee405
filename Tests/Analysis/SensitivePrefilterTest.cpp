#include "Analysis/SecretKinds.h"

#include "Foundation/Pattern.h"
#include "Foundation/Text.h"

#include <gtest/gtest.h>

#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

namespace Nimbrel::SensitivePrefilter {
namespace {

/// Texts out of pieces that secrets are made of, so that matches and near misses are frequent.
std::string randomText(std::mt19937& random) {
  static const std::array<std::string, 37> pieces{"eyJabcdefgh.",
                                                  "abcdefgh.",
                                                  "4111 1111 1111 ",
                                                  "AKIA",
                                                  "ABCDEFGHIJKLMNOP",
                                                  "sk-",
                                                  "abcdefghijklmnopqrst",
                                                  "ghp_",
                                                  "gh",
                                                  "xoxb-",
                                                  "0123456789",
                                                  "eyJ",
                                                  ".",
                                                  "bearer",
                                                  "BEA",
                                                  "RER",
                                                  " ",
                                                  "\t",
                                                  "\n",
                                                  "\u00A0",
                                                  "password",
                                                  "Pass",
                                                  "phrase",
                                                  "api",
                                                  "_key",
                                                  "token",
                                                  ":",
                                                  "=",
                                                  "secret",
                                                  "PAS\u017F",
                                                  "\u212A",
                                                  "ß",
                                                  "4111",
                                                  "-",
                                                  "٤",
                                                  "ann.lee",
                                                  "@example.com"};
  std::string text;
  const auto count = 1 + random() % 9;
  for (unsigned i = 0; i < count; ++i) text += pieces.at(random() % pieces.size());
  return text;
}

TEST(SensitivePrefilter, NeverSaysNoToATextThatTheExpressionMatches) {
  std::mt19937 random(7);
  std::vector<std::string> texts;
  for (int round = 0; round < 40'000; ++round) texts.push_back(randomText(random));
  for (const auto& kind : secretKinds) {
    const auto pattern = Pattern::compile(kind.expression);
    ASSERT_TRUE(pattern);
    int matched = 0;
    for (const auto& text : texts) {
      if (pattern->matches(Text::toUtf16(text)).empty()) continue;
      ++matched;
      EXPECT_TRUE(possibleIn(text).test(static_cast<std::size_t>(kind.sought))) << kind.label << ": " << text;
    }
    EXPECT_GT(matched, 0) << kind.label;
  }
}

TEST(SensitivePrefilter, SaysNoToOrdinaryText) {
  const std::string_view text = "Total: 12.50 EUR at 10:30, invoice 2026-0042. See https://example.com/a?b=c for more.";
  EXPECT_TRUE(possibleIn(text).none());
}

TEST(SensitivePrefilter, KnowsEveryCharacterThatFoldsToAsciiLetters) {
  for (UChar32 code = 0x80; code <= 0x10FFFF; ++code) {
    if (code >= 0xD800 && code <= 0xDFFF) continue;
    const auto folded = icu::UnicodeString(code).foldCase();
    bool holdsLetter = false;
    for (int i = 0; i < folded.length(); ++i) holdsLetter |= folded[i] >= u'a' && folded[i] <= u'z';
    EXPECT_EQ(foldsToAsciiLetters(static_cast<char32_t>(code)), holdsLetter) << std::hex << code;
  }
}

}  // namespace
}  // namespace Nimbrel::SensitivePrefilter
