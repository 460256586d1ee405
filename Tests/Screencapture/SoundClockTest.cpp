#include "Screencapture/SoundClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

namespace Nimbrel::Screencapture {

namespace {

using namespace std::chrono_literals;
using Time = SoundClock::Time;
using Place = SoundClock::Place;

constexpr int rate = 1000;         // a sample is a millisecond
constexpr std::size_t block = 20;  // so is a block
const Time start{100s};

/// Places so many blocks in a row, each measured `error` beside its true time, and returns the last place.
Place placeBlocks(SoundClock& clock, Time& time, int count, std::chrono::milliseconds error = 0ms) {
  Place place;
  for (; count > 0; --count, time += 20ms) place = clock.place(time + error, block);
  return place;
}

TEST(SoundClockTest, TheFirstBlockIsWhereItIsMeasured) {
  SoundClock clock(rate);
  EXPECT_EQ(clock.place(start, block), (Place{start, 0}));
}

TEST(SoundClockTest, BlocksFollowEachOtherWithoutASeam) {
  SoundClock clock(rate);
  EXPECT_EQ(clock.place(start, block).start, start);
  EXPECT_EQ(clock.place(start + 50ms, block).start, start + 20ms);
  EXPECT_EQ(clock.place(start + 10ms, block).start, start + 40ms);
}

TEST(SoundClockTest, SingleMeasurementsThatAreOffCountForNothing) {
  SoundClock clock(rate);
  auto time = start;
  placeBlocks(clock, time, 10);
  placeBlocks(clock, time, 4, 300ms);
  placeBlocks(clock, time, 1);
  placeBlocks(clock, time, 4, -300ms);
  const auto expected = time;
  EXPECT_EQ(placeBlocks(clock, time, 1), (Place{expected, 0}));
}

TEST(SoundClockTest, AfterLostSamplesItGoesOnWhereItIsMeasured) {
  SoundClock clock(rate);
  auto time = start;
  placeBlocks(clock, time, 10);
  time += 1s;
  EXPECT_EQ(placeBlocks(clock, time, 4), (Place{start + 260ms, 0})) << "it may be noise yet";
  EXPECT_EQ(placeBlocks(clock, time, 1), (Place{start + 1280ms, 0}));
  EXPECT_EQ(placeBlocks(clock, time, 1), (Place{start + 1300ms, 0}));
}

TEST(SoundClockTest, ASurplusOfSamplesIsLeftOut) {
  SoundClock clock(rate);
  auto time = start;
  placeBlocks(clock, time, 10);
  time -= 70ms;
  EXPECT_EQ(placeBlocks(clock, time, 4).skip, 0U);
  auto skipped = placeBlocks(clock, time, 1);
  EXPECT_EQ(skipped, (Place{start + 280ms, block})) << "nothing goes back in time";
  placeBlocks(clock, time, 2);
  EXPECT_EQ(placeBlocks(clock, time, 1), (Place{start + 280ms, 10})) << "what was ahead is caught up with";
  EXPECT_EQ(placeBlocks(clock, time, 1), (Place{start + 290ms, 0}));
}

/// A source whose second is a thousandth longer or shorter than that of the frames.
class DriftTest : public ::testing::TestWithParam<double> {};

TEST_P(DriftTest, DriftOverAnHourStaysBounded) {
  SoundClock clock(rate);
  Time end = start;
  SoundClock::Time::duration worst{0};
  for (int i = 0; i < 180'000; ++i) {
    const auto measured = start + std::chrono::nanoseconds(static_cast<std::int64_t>(i * 20e6 * GetParam()));
    const auto place = clock.place(measured, block);
    ASSERT_GE(place.start, end) << "blocks overlap";
    end = place.start + std::chrono::milliseconds(block - place.skip);
    if (place.skip == block) continue;
    const auto rest = measured + std::chrono::milliseconds(place.skip);
    worst = std::max(worst, std::chrono::abs(place.start - rest));
  }
  EXPECT_LE(worst, 60ms);
  EXPECT_GE(worst, 30ms) << "it is in step for other reasons";
}

INSTANTIATE_TEST_SUITE_P(Rates, DriftTest, ::testing::Values(1.001, 0.999));

}  // namespace

}  // namespace Nimbrel::Screencapture
