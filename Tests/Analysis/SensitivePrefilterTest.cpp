#include "Analysis/SensitivePrefilter.h"

#include "Foundation/Pattern.h"
#include "Foundation/Text.h"

#include <gtest/gtest.h>

#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <random>

namespace Nimbrel::SensitivePrefilter {
namespace {

struct Pair {
  const char16_t* expression;
  bool (*mayMatch)(std::string_view text);
};

const std::array<Pair, 6> pairs{{
    {uR"(\b(?:AKIA[0-9A-Z]{16}|sk-[A-Za-z0-9]{20,}|gh[pousr]_[A-Za-z0-9]{20,}|xox[baprs]-[A-Za-z0-9-]{10,})\b)",
     mayHoldAPIKey},
    {uR"(\beyJ[A-Za-z0-9_-]{8,}\.[A-Za-z0-9_-]{8,}\.[A-Za-z0-9_-]{4,}\b)", mayHoldWebToken},
    {uR"((?i)\bbearer\s+[A-Za-z0-9._\-]{16,})", mayHoldBearerToken},
    {uR"((?i)\b(?:pass(?:word|phrase)?|secret|api[ _-]?key|token)\b\s*[:=]\s*\S{6,})", mayHoldPassword},
    {uR"(\b(?:\d[ -]?){13,19}\b)", mayHoldCard},
    {uR"(\b[A-Za-z0-9._%+-]+@[A-Za-z0-9.-]+\.[A-Za-z]{2,}\b)", mayHoldEmail},
}};

/// Texts out of pieces that secrets are made of, so that matches and near misses are frequent.
std::string randomText(std::mt19937& random) {
  static const std::array<std::string, 34> pieces{"AKIA",      "ABCDEFGHIJKLMNOP",
                                                  "sk-",       "abcdefghijklmnopqrst",
                                                  "ghp_",      "gh",
                                                  "xoxb-",     "0123456789",
                                                  "eyJ",       ".",
                                                  "bearer",    "BEA",
                                                  "RER",       " ",
                                                  "\t",        "\n",
                                                  "\u00A0",    "password",
                                                  "Pass",      "phrase",
                                                  "api",       "_key",
                                                  "token",     ":",
                                                  "=",         "secret",
                                                  "PAS\u017F", "\u212A",
                                                  "ß",         "4111",
                                                  "-",         "٤",
                                                  "ann.lee",   "@example.com"};
  std::string text;
  const auto count = 1 + random() % 9;
  for (unsigned i = 0; i < count; ++i) text += pieces.at(random() % pieces.size());
  return text;
}

TEST(SensitivePrefilter, NeverSaysNoToATextThatTheExpressionMatches) {
  std::mt19937 random(7);
  std::array<int, pairs.size()> matched{};
  std::array<Pattern, pairs.size()> patterns{
      *Pattern::compile(pairs[0].expression), *Pattern::compile(pairs[1].expression),
      *Pattern::compile(pairs[2].expression), *Pattern::compile(pairs[3].expression),
      *Pattern::compile(pairs[4].expression), *Pattern::compile(pairs[5].expression)};
  for (int round = 0; round < 20'000; ++round) {
    const auto text = randomText(random);
    for (std::size_t i = 0; i < pairs.size(); ++i) {
      if (patterns.at(i).matches(Text::toUtf16(text)).empty()) continue;
      ++matched.at(i);
      EXPECT_TRUE(pairs.at(i).mayMatch(text)) << i << ": " << text;
    }
  }
  for (const int count : {matched[0], matched[2], matched[3], matched[5]}) EXPECT_GT(count, 0);
}

TEST(SensitivePrefilter, SaysNoToOrdinaryText) {
  const std::string_view text = "Total: 12.50 EUR at 10:30, invoice 2026-0042. See https://example.com/a?b=c for more.";
  EXPECT_TRUE(std::ranges::none_of(pairs, [&](const Pair& pair) { return pair.mayMatch(text); }));
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
