#include "Recording/SoundOverview.h"

#include "Recording/RecordingProcessor.h"
#include "Support/Movies.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

namespace Nimbrel::RecordingProcessor {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace Testing;

TEST(SoundPeaksTest, EachPartHasItsLoudestSample) {
  SoundPeaks peaks(4, 4);
  const std::vector<std::int16_t> samples{1, -700, 20, 3, -4, 5, 6000, -7};
  peaks.add({.start = 0, .length = 4, .samples = samples});
  EXPECT_THAT(peaks.peaks(), ElementsAre(700, 20, 5, 6000));
}

TEST(SoundPeaksTest, ABufferIsPutWhereItIsHeard) {
  SoundPeaks peaks(10, 10);
  const std::vector<std::int16_t> samples{100, 200};
  peaks.add({.start = 2.5, .length = 1, .samples = samples});
  peaks.add({.start = 7.2, .length = 0.1, .samples = samples});
  EXPECT_THAT(peaks.peaks(), ElementsAre(0, 0, 100, 200, 0, 0, 0, 200, 0, 0));
}

TEST(SoundPeaksTest, ALouderBufferCountsAndASofterOneDoesNot) {
  SoundPeaks peaks(1, 1);
  for (const std::int16_t level : std::vector<std::int16_t>{300, 500, 400}) {
    peaks.add({.start = 0, .length = 1, .samples = std::span(&level, 1)});
  }
  EXPECT_THAT(peaks.peaks(), ElementsAre(500));
}

TEST(SoundPeaksTest, TheLowestSampleIsTheLoudest) {
  SoundPeaks peaks(1, 1);
  const std::int16_t lowest = std::numeric_limits<std::int16_t>::min();
  peaks.add({.start = 0, .length = 1, .samples = std::span(&lowest, 1)});
  EXPECT_THAT(peaks.peaks(), ElementsAre(32768));
}

TEST(SoundPeaksTest, WhatIsOutsideOfTheRecordingCountsForNothing) {
  SoundPeaks peaks(2, 2);
  const std::vector<std::int16_t> samples{100, 200, 300, 400};
  peaks.add({.start = -1, .length = 4, .samples = samples});
  EXPECT_THAT(peaks.peaks(), ElementsAre(200, 300));
  peaks.add({.start = 50, .length = 4, .samples = samples});
  peaks.add({.start = -50, .length = 4, .samples = samples});
  EXPECT_THAT(peaks.peaks(), ElementsAre(200, 300));
}

TEST(SoundPeaksTest, ABufferThatDoesNotTellItsLengthIsATenthOfASecond) {
  SoundPeaks peaks(1, 10);
  const std::vector<std::int16_t> samples(8, 100);
  peaks.add({.start = 0.5, .length = std::nullopt, .samples = samples});
  EXPECT_THAT(peaks.peaks(), ElementsAre(0, 0, 0, 0, 0, 100, 0, 0, 0, 0));
}

TEST(SoundPeaksTest, WithoutALengthOrPartsThereIsNothing) {
  const std::vector<std::int16_t> samples{100};
  SoundPeaks none(0, 2);
  none.add({.start = 0, .length = 1, .samples = samples});
  EXPECT_THAT(none.peaks(), ElementsAre(0, 0));
  SoundPeaks nowhere(1, 0);
  nowhere.add({.start = 0, .length = 1, .samples = samples});
  EXPECT_THAT(nowhere.peaks(), IsEmpty());
}

TEST(LoudnessTest, IsAScaleOfSixtyDecibels) {
  EXPECT_DOUBLE_EQ(loudness(32768), 1);
  EXPECT_NEAR(loudness(3277), 2.0 / 3, 0.001);
  EXPECT_NEAR(loudness(328), 1.0 / 3, 0.001);
  EXPECT_NEAR(loudness(33), 0, 0.002);
  EXPECT_EQ(loudness(1), 0);
  EXPECT_EQ(loudness(0), 0);
}

class SoundOverviewTest : public ::testing::Test {
 protected:
  void writeRecording(double end, const std::vector<double>& clicks) const {
    writeMovie(path_, {.times = steadyTimes(end), .end = end, .sound = MadeMovie::Sound{.end = end, .clicks = clicks}});
  }
  [[nodiscard]] SoundOverview overview(std::size_t parts) const {
    auto result = soundOverview(path_, parts);
    EXPECT_TRUE(result) << result.error().message;
    return result ? std::move(result).value() : SoundOverview{};
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.path("Recording.mov");
};

TEST_F(SoundOverviewTest, ShowsWhereARecordingIsLoudAndWhatIsAudibleInIt) {
  writeRecording(4, {0.55, 2.75});
  const auto sound = overview(40);
  EXPECT_TRUE(sound.hasSound);
  EXPECT_NEAR(sound.duration, 4, 0.001);
  EXPECT_EQ(sound.audible, audibleRanges(path_).value());
  ASSERT_THAT(sound.peaks, SizeIs(40));
  for (std::size_t i = 0; i < 40; ++i) {
    // Around a click an encoder leaves traces.
    if (i == 5 || i == 27) {
      EXPECT_GT(sound.peaks[i], 5000) << i;
    } else if (i < 4 || (i > 6 && i < 26) || i > 28) {
      EXPECT_LT(sound.peaks[i], 420) << i;
    }
  }
}

TEST_F(SoundOverviewTest, SilenceIsASound) {
  writeRecording(1, {});
  const auto sound = overview(10);
  EXPECT_TRUE(sound.hasSound);
  EXPECT_THAT(sound.audible, IsEmpty());
  EXPECT_THAT(sound.peaks, Each(::testing::Lt(420)));
}

TEST_F(SoundOverviewTest, ARecordingWithoutATrackOfSoundHasNone) {
  writeMovie(path_, {.times = {0}, .end = 0.05});
  const auto sound = overview(10);
  EXPECT_FALSE(sound.hasSound);
  EXPECT_EQ(sound.duration, 0.1);
  EXPECT_THAT(sound.audible, IsEmpty());
}

TEST_F(SoundOverviewTest, WhatIsNoRecordingOrIsToStopIsAnError) {
  writeRecording(1, {});
  std::stop_source source;
  source.request_stop();
  EXPECT_EQ(soundOverview(path_, 10, source.get_token()).error().message, "The search for sound was stopped");
  folder_.write("Recording.mov", "no movie");
  EXPECT_EQ(soundOverview(path_, 10).error().message, "The file is damaged or no recording");
}

}  // namespace
}  // namespace Nimbrel::RecordingProcessor
