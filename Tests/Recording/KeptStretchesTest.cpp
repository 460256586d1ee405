#include "Recording/KeptStretches.h"

#include <gmock/gmock.h>

#include <limits>
#include <vector>

namespace Nimbrel::RecordingProcessor {
namespace {

using MediaFile::TimeRange;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<TimeRange> kept(const TimeRange& window, const std::vector<TimeRange>& audible) {
  return keptOf(window, audible);
}

TEST(WindowOf, IsWhatIsAskedForWithinTheRecording) {
  EXPECT_EQ(windowOf(1, 3, 10), (TimeRange{1, 3}));
  EXPECT_EQ(windowOf(0, 10, 10), (TimeRange{0, 10}));
}

TEST(WindowOf, IsHeldWithinTheRecording) {
  EXPECT_EQ(windowOf(-5, 3, 10), (TimeRange{0, 3}));
  EXPECT_EQ(windowOf(2, 30, 10), (TimeRange{2, 10}));
  EXPECT_EQ(windowOf(-1, 99, 10), (TimeRange{0, 10}));
}

TEST(WindowOf, IsNeverShorterThanATenthOfASecond) {
  EXPECT_EQ(windowOf(2, 2, 10), (TimeRange{2, 2.1}));
  EXPECT_EQ(windowOf(2, 2.05, 10), (TimeRange{2, 2.1}));
}

TEST(WindowOf, AStartBehindTheEndYieldsTheShortestFromThere) {
  EXPECT_EQ(windowOf(5, 3, 10), (TimeRange{5, 5.1}));
  EXPECT_EQ(windowOf(50, 3, 10), (TimeRange{10, 10.1}));
}

TEST(WindowOf, AStartAtTheVeryEndReachesBeyondIt) {
  EXPECT_EQ(windowOf(10, 10, 10), (TimeRange{10, 10.1}));
  EXPECT_EQ(windowOf(9.95, 10, 10), (TimeRange{5970.0 / 600, 6030.0 / 600}));
}

TEST(WindowOf, ARecordingWithoutALengthHasTheShortest) { EXPECT_EQ(windowOf(0, 0.1, 0), (TimeRange{0, 0.1})); }

TEST(WindowOf, IsAWholeNumberOfSixHundredths) { EXPECT_EQ(windowOf(1.0004, 2.0009, 10), (TimeRange{1, 1201.0 / 600})); }

TEST(WindowOf, WhatIsNoNumberIsTheBeginningAndTheShortest) {
  constexpr double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(windowOf(none, none, 10), (TimeRange{0, 0.1}));
  EXPECT_EQ(windowOf(2, none, 10), (TimeRange{2, 2.1}));
}

TEST(KeptOf, IsWhatIsAudibleWithinTheWindow) {
  EXPECT_THAT(kept({2, 8}, {{0, 1}, {1.5, 3}, {4, 5}, {7.5, 9}, {10, 11}}),
              ElementsAre(TimeRange{2, 3}, TimeRange{4, 5}, TimeRange{7.5, 8}));
}

TEST(KeptOf, WhatOnlyTouchesTheWindowIsOutside) {
  EXPECT_THAT(kept({2, 4}, {{1, 2}, {3, 3.5}, {4, 5}}), ElementsAre(TimeRange{3, 3.5}));
}

TEST(KeptOf, IsTheWholeWindowWhereNothingIsAudible) {
  EXPECT_THAT(kept({2, 4}, {}), ElementsAre(TimeRange{2, 4}));
  EXPECT_THAT(kept({2, 4}, {{0, 1}, {5, 6}}), ElementsAre(TimeRange{2, 4}));
}

std::vector<TimeRange> dropped(const TimeRange& window, const std::vector<TimeRange>& audible) {
  return droppedOf(window, audible);
}

TEST(DroppedOf, IsWhatIsSilentWithinTheWindow) {
  EXPECT_THAT(dropped({2, 8}, {{0, 1}, {1.5, 3}, {4, 5}, {7.5, 9}}), ElementsAre(TimeRange{3, 4}, TimeRange{5, 7.5}));
  EXPECT_THAT(dropped({2, 8}, {{4, 5}}), ElementsAre(TimeRange{2, 4}, TimeRange{5, 8}));
}

TEST(DroppedOf, IsNothingWhereAllIsAudibleAndWhereNothingIs) {
  EXPECT_THAT(dropped({2, 8}, {{1, 9}}), IsEmpty());
  EXPECT_THAT(dropped({2, 8}, {}), IsEmpty());
  EXPECT_THAT(dropped({2, 8}, {{0, 2}, {8, 9}}), IsEmpty());
}

TEST(DroppedOf, StretchesThatOverlapOrComeOutOfOrderLeaveTheGapsBetweenThem) {
  EXPECT_THAT(dropped({0, 10}, {{6, 9}, {1, 5}, {2, 3}}),
              ElementsAre(TimeRange{0, 1}, TimeRange{5, 6}, TimeRange{9, 10}));
}

TEST(LastMoment, IsShortlyBeforeTheEndAndNotBeforeTheBeginning) {
  EXPECT_DOUBLE_EQ(lastMoment({1, 3}), 2.999);
  EXPECT_DOUBLE_EQ(lastMoment({1, 1}), 1);
}

TEST(KeptOf, StretchesThatOverlapStayAsTheyAre) {
  EXPECT_THAT(kept({0, 10}, {{1, 3}, {2, 4}}), ElementsAre(TimeRange{1, 3}, TimeRange{2, 4}));
}

}  // namespace
}  // namespace Nimbrel::RecordingProcessor
