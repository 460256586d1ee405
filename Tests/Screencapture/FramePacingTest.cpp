#include "Screencapture/FramePacing.h"

#include <gtest/gtest.h>

namespace Nimbrel::Screencapture {

namespace {

using namespace std::chrono_literals;

const FramePacing::Time start{100s};

TEST(FramePacingTest, FramesAreAnIntervalApart) {
  const FramePacing pacing(start, 30ms);
  EXPECT_EQ(pacing.next(start), start + 30ms);
  EXPECT_EQ(pacing.next(start + 10ms), start + 30ms);
  EXPECT_EQ(pacing.next(start + 30ms), start + 60ms);
}

TEST(FramePacingTest, WhoIsLateMissesFramesAndStaysInStep) {
  const FramePacing pacing(start, 30ms);
  EXPECT_EQ(pacing.next(start + 95ms), start + 120ms);
  EXPECT_EQ(pacing.next(start + 1h + 1ms), start + 1h + 30ms);
}

}  // namespace

}  // namespace Nimbrel::Screencapture
