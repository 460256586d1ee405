#include "Views/Recording/TrimTimes.h"

#include <gtest/gtest.h>

#include <limits>

namespace Nimbrel {
namespace {

void expectSpan(const TimeSpan& span, double least, double most) {
  EXPECT_DOUBLE_EQ(span.least, least);
  EXPECT_DOUBLE_EQ(span.most, most);
}

TEST(TrimTimesTest, AreASecondUntilTheRecordingIsKnown) {
  const TrimTimes times;
  expectSpan(times.startSpan(), 0, 0.9);
  expectSpan(times.endSpan(), 0.1, 1);
}

TEST(TrimTimesTest, TheEndsNeverCross) {
  const TrimTimes times{.duration = 60, .start = 12, .end = 40};
  expectSpan(times.startSpan(), 0, 39.9);
  expectSpan(times.endSpan(), 12.1, 60);
}

TEST(TrimTimesTest, ATenthOfASecondStaysBetweenThem) {
  const TrimTimes times{.duration = 60, .start = 59.9, .end = 60};
  expectSpan(times.startSpan(), 0, 59.9);
  expectSpan(times.endSpan(), 60, 60);
  const TrimTimes beyond{.duration = 60, .start = 59.95, .end = 60};
  expectSpan(beyond.endSpan(), 60, 60.05);
}

TEST(TrimTimesTest, TheShortestRecordingHasSomewhereToGo) {
  const TrimTimes times{.duration = 0.1, .start = 0, .end = 0.1};
  expectSpan(times.startSpan(), 0, 0.01);
  expectSpan(times.endSpan(), 0.1, 0.1);
}

TEST(TimeTextTest, IsMinutesAndSecondsCutToWholeOnes) {
  EXPECT_EQ(timeText(0), QStringLiteral("0:00"));
  EXPECT_EQ(timeText(0.999), QStringLiteral("0:00"));
  EXPECT_EQ(timeText(6), QStringLiteral("0:06"));
  EXPECT_EQ(timeText(59.99), QStringLiteral("0:59"));
  EXPECT_EQ(timeText(60), QStringLiteral("1:00"));
  EXPECT_EQ(timeText(754.2), QStringLiteral("12:34"));
}

TEST(TimeTextTest, HoursAreMinutes) {
  EXPECT_EQ(timeText(3600), QStringLiteral("60:00"));
  EXPECT_EQ(timeText(36'000 + 61), QStringLiteral("601:01"));
}

TEST(TimeTextTest, AnyNumberIsSomeTime) {
  EXPECT_EQ(timeText(-5), QStringLiteral("0:00"));
  EXPECT_FALSE(timeText(std::numeric_limits<double>::infinity()).isEmpty());
}

}  // namespace
}  // namespace Nimbrel
