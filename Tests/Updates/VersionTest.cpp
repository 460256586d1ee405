#include "Updates/Version.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

bool isNewer(std::string_view one, std::string_view other) {
  const auto first = Version::parse(one);
  const auto second = Version::parse(other);
  EXPECT_TRUE(first && second) << one << ", " << other;
  return first && second && *first > *second;
}

TEST(Version, NumbersCountAndNotLetters) {
  EXPECT_TRUE(isNewer("1.10", "1.9"));
  EXPECT_FALSE(isNewer("1.9", "1.10"));
  EXPECT_TRUE(isNewer("2", "1.999.999"));
  EXPECT_TRUE(isNewer("0.1.1", "0.1.0"));
}

TEST(Version, WhatIsMissingAtTheEndIsZero) {
  EXPECT_EQ(Version::parse("1.2"), Version::parse("1.2.0.0"));
  EXPECT_EQ(Version::parse("0"), Version::parse("0.0"));
  EXPECT_TRUE(isNewer("1.2.0.1", "1.2"));
  EXPECT_FALSE(isNewer("1.2.0", "1.2"));
}

TEST(Version, LeadingZerosDoNotCount) { EXPECT_EQ(Version::parse("1.02"), Version::parse("1.2")); }

TEST(Version, AnythingElseIsNone) {
  for (const auto* text : {"", ".", "1.", ".1", "1..2", "v1", "1.2b", "1.2-rc1", " 1", "1 ", "-1", "+1", "1,2", "１"}) {
    EXPECT_FALSE(Version::parse(text)) << text;
  }
}

TEST(Version, NumbersEndAtNineDigitsAndEightOfThem) {
  EXPECT_TRUE(Version::parse("999999999"));
  EXPECT_FALSE(Version::parse("1000000000"));
  EXPECT_TRUE(Version::parse("1.2.3.4.5.6.7.8"));
  EXPECT_FALSE(Version::parse("1.2.3.4.5.6.7.8.9"));
  EXPECT_FALSE(Version::parse(std::string(1'000'000, '1')));
}

}  // namespace
}  // namespace Nimbrel
