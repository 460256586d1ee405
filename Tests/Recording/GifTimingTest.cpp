#include "Recording/GifTiming.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cmath>
#include <limits>

namespace Nimbrel {
namespace {

using namespace RecordingProcessor;
using MediaFile::TimeRange;

TEST(GifTiming, HasAsManyFramesASecondAsAskedFor) {
  EXPECT_EQ(gifTiming(2, 10).frameCount, 20);
  EXPECT_EQ(gifTiming(2, 10).rate, 10);
  EXPECT_EQ(gifTiming(2, 10).delay(), 0.1);
}

TEST(GifTiming, LeavesOutAFrameThatWouldNotBeWhole) {
  EXPECT_EQ(gifTiming(0.99, 10).frameCount, 9);
  EXPECT_DOUBLE_EQ(gifTiming(0.99, 10).rate, 9 / 0.99) << "the others share its time";
}

TEST(GifTiming, HasOneFrameAtLeast) {
  EXPECT_EQ(gifTiming(0.05, 10).frameCount, 1);
  EXPECT_EQ(gifTiming(0.05, 10).rate, 10) << "as if it played a tenth of a second";
  EXPECT_EQ(gifTiming(0.1, 4).frameCount, 1);
  EXPECT_EQ(gifTiming(0, 10).frameCount, 1);
}

TEST(GifTiming, SpreadsAHundredAndEightyFramesOverALongRecording) {
  const auto timing = gifTiming(60, 5);
  EXPECT_EQ(timing.frameCount, 180);
  EXPECT_EQ(timing.rate, 3);
  EXPECT_DOUBLE_EQ(timing.delay(), 1.0 / 3);
  EXPECT_EQ(gifTiming(36, 5).frameCount, 180);
  EXPECT_EQ(gifTiming(35.9, 5).frameCount, 179);
}

TEST(GifTiming, TakesAnyRate) {
  for (const int fps : {0, -1, -100, INT_MIN}) {
    EXPECT_EQ(gifTiming(10, fps).frameCount, 1) << fps;
    EXPECT_EQ(gifTiming(10, fps).delay(), 10) << fps;
  }
  EXPECT_EQ(gifTiming(10, INT_MAX).frameCount, 180);
  EXPECT_EQ(gifTiming(std::numeric_limits<double>::infinity(), 1).frameCount, 180);
  EXPECT_EQ(gifTiming(std::nan(""), 1).frameCount, 1);
}

TEST(GifTiming, ShowsMomentsAtAnEvenDistance) {
  const auto timing = gifTiming(60, 5);
  EXPECT_EQ(frameTime(timing, 0, 60), 0);
  EXPECT_EQ(frameTime(timing, 1, 60), 200.0 / 600);
  EXPECT_EQ(frameTime(timing, 179, 60), 179.0 / 3);
  EXPECT_EQ(frameTime(gifTiming(1, 7), 1, 1), 86.0 / 600) << "on the scale of all times";
}

TEST(GifTiming, ShowsNothingBehindTheEnd) { EXPECT_EQ(frameTime({.frameCount = 5, .rate = 10}, 4, 0.3), 0.3); }

TEST(GifTiming, FindsTheMomentInTheRecording) {
  constexpr std::array stretches{TimeRange{1, 2.5}, TimeRange{6, 8}, TimeRange{9.1, 9.2}};
  EXPECT_EQ(sourceTime(stretches, 0), 1);
  EXPECT_EQ(sourceTime(stretches, 1), 2);
  EXPECT_EQ(sourceTime(stretches, 1.5), 6) << "the end of a stretch is not part of it";
  EXPECT_EQ(sourceTime(stretches, 2), 6.5);
  EXPECT_DOUBLE_EQ(sourceTime(stretches, 3.55), 9.15);
  EXPECT_EQ(sourceTime(stretches, 3.6), 9.2);
  EXPECT_EQ(sourceTime(stretches, 100), 9.2);
  EXPECT_EQ(sourceTime(stretches, -1), 1);
}

TEST(GifTiming, IsNotMisledBySumsThatAreNotExact) {
  // 0.1 + 0.2 is a little more than 0.3, and 0.7 - 0.6 a little less than 0.1.
  constexpr std::array stretches{TimeRange{0, 0.1}, TimeRange{0.3, 0.5}, TimeRange{0.6, 0.7}, TimeRange{5, 6}};
  EXPECT_DOUBLE_EQ(sourceTime(stretches, 0.3), 0.6);
  EXPECT_DOUBLE_EQ(sourceTime(stretches, 0.4), 5);
}

}  // namespace
}  // namespace Nimbrel
