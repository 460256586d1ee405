#include "Linux/X11/StartupNotice.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

TEST(StartupNotices, TheTimeStandsAtTheEndOfAnIdentifier) {
  EXPECT_EQ(StartupNotice::timeOf("panel/nimbrel/12-0-host_TIME4294967295"), 4294967295U);
  EXPECT_EQ(StartupNotice::timeOf("a_TIME1_TIME27"), 27U);
  for (const auto* without : {"", "panel", "panel_TIME", "panel_TIME12x", "panel_TIME-1", "panel_TIME4294967296"}) {
    EXPECT_EQ(StartupNotice::timeOf(without), 0U) << without;
  }
}

TEST(StartupNotices, ARemovalGoesOutInPiecesThatEndWithAZero) {
  std::string text;
  for (const auto& piece : StartupNotice::removal("a \"quoted\\one\"_TIME1")) text.append(piece.begin(), piece.end());
  EXPECT_EQ(text.size() % 20, 0U);
  EXPECT_STREQ(text.c_str(), R"(remove: ID="a \"quoted\\one\"_TIME1")");
}

TEST(StartupNotices, TheZeroOfATextThatFillsItsPiecesHasOneOfItsOwn) {
  // With its frame of 13 letters it fills one piece to the last.
  const auto pieces = StartupNotice::removal("1234567");
  ASSERT_EQ(pieces.size(), 2U);
  EXPECT_EQ(pieces.back().front(), 0);
}

}  // namespace
}  // namespace Nimbrel
