#include "Recording/AudibleRanges.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace Nimbrel::RecordingProcessor {
namespace {

using MediaFile::TimeRange;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Buffer {
  double start = 0;
  std::optional<double> length;
  std::vector<std::int16_t> samples = {0, 1000};
};

std::vector<TimeRange> rangesOf(const std::vector<Buffer>& buffers) {
  AudibleRanges ranges;
  for (const auto& [start, length, samples] : buffers)
    ranges.add({.start = start, .length = length, .samples = samples});
  return ranges.padded();
}

/// The ranges with the room around them taken away, to the thousandth.
std::vector<TimeRange> bareRangesOf(const std::vector<Buffer>& buffers) {
  auto ranges = rangesOf(buffers);
  for (auto& [start, end] : ranges) {
    start = std::round((start + 0.15) * 1000) / 1000;
    end = std::round((end - 0.2) * 1000) / 1000;
  }
  return ranges;
}

bool isAudible(std::vector<std::int16_t> samples) {
  return !rangesOf({{.start = 1, .length = 1, .samples = std::move(samples)}}).empty();
}

TEST(AudibleRanges, AreLouderThanTheThreshold) {
  EXPECT_FALSE(isAudible({0, 420, -420}));
  EXPECT_TRUE(isAudible({421}));
  EXPECT_TRUE(isAudible({-421}));
  EXPECT_TRUE(isAudible({std::numeric_limits<std::int16_t>::min()}));
  EXPECT_TRUE(isAudible({std::numeric_limits<std::int16_t>::max()}));
  EXPECT_TRUE(isAudible({0, 0, 0, 421}));
}

TEST(AudibleRanges, ABufferWithoutSamplesIsSilent) {
  EXPECT_FALSE(isAudible({}));
  EXPECT_THAT(rangesOf({}), IsEmpty());
}

TEST(AudibleRanges, ArePaddedBeforeAndAfter) {
  EXPECT_THAT(rangesOf({{.start = 1, .length = 1}}), ElementsAre(TimeRange{0.85, 2.2}));
}

TEST(AudibleRanges, ThePaddingDoesNotReachBeforeTheBeginning) {
  EXPECT_THAT(rangesOf({{.start = 0.1, .length = 1}}), ElementsAre(TimeRange{0, 1.3}));
}

TEST(AudibleRanges, ABufferWithoutALengthCountsATenthOfASecond) {
  const TimeRange expected{0.85, 1.3};
  EXPECT_THAT(rangesOf({{.start = 1, .length = std::nullopt}}), ElementsAre(expected));
  EXPECT_THAT(rangesOf({{.start = 1, .length = 0}}), ElementsAre(expected));
  EXPECT_THAT(rangesOf({{.start = 1, .length = -1}}), ElementsAre(expected));
  EXPECT_THAT(rangesOf({{.start = 1, .length = std::numeric_limits<double>::quiet_NaN()}}), ElementsAre(expected));
}

TEST(AudibleRanges, AGapBelowTheShortestPauseMerges) {
  EXPECT_THAT(bareRangesOf({{.start = 1, .length = 1}, {.start = 2.54, .length = 1}}), ElementsAre(TimeRange{1, 3.54}));
}

TEST(AudibleRanges, AGapOfExactlyTheShortestPauseDoesNotMerge) {
  // Some of these differences come out as a little less than 0.55 in floating point.
  for (const double start : {0.2, 0.4, 1.0, 2.7, 13.3, 1000.1}) {
    EXPECT_EQ(rangesOf({{.start = start, .length = 1}, {.start = start + 1 + 0.55, .length = 1}}).size(), 2U) << start;
    EXPECT_EQ(rangesOf({{.start = start, .length = 1}, {.start = start + 1 + 0.54, .length = 1}}).size(), 1U) << start;
  }
}

TEST(AudibleRanges, SilentBuffersCountForNothing) {
  EXPECT_THAT(bareRangesOf({{.start = 1, .length = 1},
                            {.start = 2, .length = 0.6, .samples = {420}},
                            {.start = 2.6, .length = 1},
                            {.start = 3.6, .length = 0.5, .samples = {}},
                            {.start = 4.1, .length = 1}}),
              ElementsAre(TimeRange{1, 2}, TimeRange{2.6, 5.1}));
}

TEST(AudibleRanges, ABufferInsideAnotherDoesNotShortenIt) {
  EXPECT_THAT(bareRangesOf({{.start = 1, .length = 5}, {.start = 2, .length = 1}}), ElementsAre(TimeRange{1, 6}));
}

TEST(AudibleRanges, ABufferThatComesLateJoinsTheOneBeforeIt) {
  EXPECT_THAT(bareRangesOf({{.start = 5, .length = 1}, {.start = 2, .length = 5}}), ElementsAre(TimeRange{5, 7}));
}

TEST(AudibleRanges, PaddedNeighboursAreNotMergedAgain) {
  EXPECT_THAT(rangesOf({{.start = 1, .length = 1}, {.start = 2.55, .length = 1}}),
              ElementsAre(TimeRange{0.85, 2.2}, TimeRange{2.4, 3.75}));
}

TEST(AudibleRanges, AreWholeNumbersOfSixHundredths) {
  const auto ranges = rangesOf({{.start = 1.00049, .length = 0.021333}});
  ASSERT_EQ(ranges.size(), 1U);
  EXPECT_EQ(ranges.front(), (TimeRange{510.0 / 600, 733.0 / 600}));
}

}  // namespace
}  // namespace Nimbrel::RecordingProcessor
