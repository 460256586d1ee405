#include "Views/Recording/RemainingTime.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

TEST(RemainingTimeTest, IsUnknownUntilThereIsASpeed) {
  RemainingTime remaining;
  EXPECT_FALSE(remaining.seconds());
  remaining.add(0, 0);
  EXPECT_FALSE(remaining.seconds());
  remaining.add(5, 0.1);
  EXPECT_FALSE(remaining.seconds()) << "how fast it goes on is not known";
  remaining.add(5.5, 0.15);
  EXPECT_FALSE(remaining.seconds()) << "half a second says too little";
}

TEST(RemainingTimeTest, FollowsTheSpeedSinceTheFirstStep) {
  RemainingTime remaining;
  remaining.add(0, 0);
  remaining.add(10, 0.1);
  remaining.add(12, 0.3);
  ASSERT_TRUE(remaining.seconds());
  EXPECT_DOUBLE_EQ(*remaining.seconds(), 7);
  remaining.add(16, 0.4);
  EXPECT_DOUBLE_EQ(*remaining.seconds(), 12) << "it has become slower";
}

TEST(RemainingTimeTest, IsUnknownWhileNothingMoves) {
  RemainingTime remaining;
  remaining.add(1, 0.2);
  remaining.add(60, 0.2);
  EXPECT_FALSE(remaining.seconds());
}

TEST(RemainingTimeTest, NothingIsLeftAtTheEnd) {
  RemainingTime remaining;
  remaining.add(0, 0.1);
  remaining.add(3, 1);
  EXPECT_EQ(remaining.seconds(), 0);
}

TEST(RemainingWordsTest, GrowCoarserWithTheTime) {
  EXPECT_EQ(remainingWords(0), QStringLiteral("Almost done"));
  EXPECT_EQ(remainingWords(1.4), QStringLiteral("Almost done"));
  EXPECT_EQ(remainingWords(1.6), QStringLiteral("About 2 seconds left"));
  EXPECT_EQ(remainingWords(59), QStringLiteral("About 59 seconds left"));
  EXPECT_EQ(remainingWords(59.7), QStringLiteral("About a minute left"));
  EXPECT_EQ(remainingWords(70), QStringLiteral("About a minute left"));
  EXPECT_EQ(remainingWords(100), QStringLiteral("About 2 minutes left"));
  EXPECT_EQ(remainingWords(1500), QStringLiteral("About 25 minutes left"));
  EXPECT_EQ(remainingWords(3590), QStringLiteral("About an hour left"));
  EXPECT_EQ(remainingWords(4000), QStringLiteral("About an hour left"));
  EXPECT_EQ(remainingWords(8000), QStringLiteral("About 2 hours left"));
}

}  // namespace
}  // namespace Nimbrel
