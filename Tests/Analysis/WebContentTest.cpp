#include "Analysis/WebContent.h"

#include "Foundation/Pattern.h"
#include "Foundation/Text.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace Nimbrel {
namespace {

bool isWeb(std::string_view text) { return looksLikeWebContent(ShotText(text)); }

TEST(WebContent, AnAddressInTheFirstFourLinesTells) {
  EXPECT_TRUE(isWeb("example.com"));
  EXPECT_TRUE(isWeb("one\n\ntwo\nthree\nexample.com"));
  EXPECT_FALSE(isWeb("one\ntwo\nthree\nfour\nexample.com"));
}

TEST(WebContent, AnAddressMayHaveASchemeAPathAndAFrame) {
  EXPECT_TRUE(isWeb("HTTPS://Example.com/a?b=c"));
  EXPECT_TRUE(isWeb("http://example.com/"));
  EXPECT_TRUE(isWeb(" \t•[<https://example.com>]·\u00A0"));
  EXPECT_TRUE(isWeb("|(sub-1.example.co.uk/ü)|"));
  EXPECT_TRUE(isWeb("example.com/\u00B7"));
}

TEST(WebContent, AnAddressStandsAloneOnItsLine) {
  EXPECT_FALSE(isWeb("see example.com"));
  EXPECT_FALSE(isWeb("example.com/a b"));
  EXPECT_FALSE(isWeb("example.com/a\u00A0b"));
  EXPECT_FALSE(isWeb("[ example.com ]"));
  EXPECT_FALSE(isWeb("• example.com"));
  EXPECT_FALSE(isWeb("example.com:80"));
  EXPECT_FALSE(isWeb("ftp://example.com"));
  EXPECT_FALSE(isWeb("https://https://example.com"));
}

TEST(WebContent, AHostEndsWithTwoLettersOrMore) {
  EXPECT_TRUE(isWeb("a.io"));
  EXPECT_FALSE(isWeb("a.i"));
  EXPECT_FALSE(isWeb("a.b2"));
  EXPECT_FALSE(isWeb(".io"));
  EXPECT_FALSE(isWeb("10.15"));
  EXPECT_FALSE(isWeb("localhost/a"));
}

TEST(WebContent, AShopHasAPriceAndTwoOfItsPhrases) {
  EXPECT_TRUE(isWeb("Add to Bag, Delivery: $ 5"));
  EXPECT_TRUE(isWeb("Buy from us, pickup today, 1299,00"));
  EXPECT_TRUE(isWeb("Currently unavailable. Lease from £5 "));
  EXPECT_TRUE(isWeb("Daily cash €\n9 per month"));
  EXPECT_TRUE(isWeb("delivery pickup ₹٤"));
}

TEST(WebContent, AShopWithoutPriceOrWithOnePhraseIsNone) {
  EXPECT_FALSE(isWeb("Add to Bag, Delivery: free, 5 pieces, 1.5 kg"));
  EXPECT_FALSE(isWeb("Delivery: $5"));
  EXPECT_FALSE(isWeb("Delivery, delivery: $5"));
}

TEST(WebContent, ASiteHasThreePhrasesAtItsFoot) {
  EXPECT_TRUE(isWeb("Sign in | Privacy | Terms"));
  EXPECT_TRUE(isWeb("Cookies. Learn more. Contact us"));
  EXPECT_TRUE(isWeb("Copyright, privacy and cookies"));
  EXPECT_FALSE(isWeb("Privacy | Terms"));
}

TEST(WebContent, AnEmptyTextIsNone) { EXPECT_FALSE(isWeb("")); }

/// A line as the expressions themselves judge it.
bool isAddressByExpression(const std::string& line) {
  static const auto address = Pattern::constant(uR"(^[a-z0-9.-]+\.[a-z]{2,}(/\S*)?$)");
  static const auto scheme = Pattern::constant(u"^https?://");
  auto rest = Text::toUtf16(Text::trimmedOf(Text::trimmedWithLineBreaks(line), U"|·•<>[]()"));
  if (const auto matches = scheme.matches(rest); !matches.empty()) rest.erase(0, matches.front().end());
  return address.isIn(rest);
}

TEST(WebContent, TakesForAnAddressWhatTheExpressionMatches) {
  static const std::array<std::string, 26> pieces{
      "a", "example", ".", "com",    "io",      "-",   "1",   "/",  "https://", "|", "•",    " ",      "\t",
      "(", "]",       "ü", "\u00A0", "http://", "x.y", "b/c", "..", "c",        "٤", "\xFF", "\u200F", "_"};
  std::mt19937 random(11);
  int addresses = 0;
  for (int round = 0; round < 60'000; ++round) {
    std::string line;
    for (auto i = 1 + random() % 7; i > 0; --i) line += pieces.at(random() % pieces.size());
    const bool expected = isAddressByExpression(line);
    if (expected) ++addresses;
    EXPECT_EQ(isWeb(line), expected) << line;
  }
  EXPECT_GT(addresses, 300);
}

}  // namespace
}  // namespace Nimbrel
