#include "Platform/MediaFile.h"

#include "Support/Movies.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <numeric>

namespace Nimbrel {
namespace {

using MediaFile::TimeRange;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace Testing;

using Stretches = std::vector<TimeRange>;

class MovieExportTest : public ::testing::Test {
 protected:
  /// Exports from a movie made for it, and reads the outcome.
  [[nodiscard]] ReadMovie exported(const MadeMovie& movie, const Stretches& stretches) const {
    writeMovie(source_, movie);
    return exportedSource(stretches);
  }

  [[nodiscard]] ReadMovie exportedSource(const Stretches& stretches) const {
    const auto failure = MediaFile::exportMovie(source_, stretches, target_, {});
    EXPECT_FALSE(failure) << failure->message;
    return failure ? ReadMovie{} : readMovie(target_);
  }

  [[nodiscard]] std::string errorOf(const Stretches& stretches) const {
    const auto failure = MediaFile::exportMovie(source_, stretches, target_, {});
    return failure ? failure->message : "";
  }

  /// The names in the folder.
  [[nodiscard]] std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path()))
      names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
  }

  TemporaryFolder folder_;
  std::string source_ = folder_.path("source.mov");
  std::string target_ = folder_.path("target.mov");
};

std::vector<int> numbers(int first, int end) {
  std::vector<int> result(static_cast<std::size_t>(end - first));
  std::iota(result.begin(), result.end(), first);
  return result;
}

std::vector<int> operator+(std::vector<int> a, const std::vector<int>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

MadeMovie silentMovie(double end) { return {.times = steadyTimes(end), .end = end}; }

TEST_F(MovieExportTest, CutsAreExactToTheFrame) {
  const auto movie = exported(silentMovie(4), {{0.5, 1}, {2, 2.5}, {3.9, 4}});
  EXPECT_EQ(movie.numbers(), numbers(15, 30) + numbers(60, 75) + numbers(117, 120));
  for (std::size_t i = 0; i < movie.pictures.size(); ++i) {
    EXPECT_NEAR(movie.pictures[i].time, static_cast<double>(i) / 30, 1e-4);
  }
  EXPECT_NEAR(movie.duration, 1.1, 0.001);
}

TEST_F(MovieExportTest, CutsAreExactFarBehindAFrameThatStandsForItself) {
  // The encoder makes one of these in eight seconds here.
  EXPECT_EQ(exported(silentMovie(10), {{7.5, 7.6}, {9, 9.1}}).numbers(), numbers(225, 228) + numbers(270, 273));
}

TEST_F(MovieExportTest, ACutThatGoesBackIsExactAsWell) {
  EXPECT_EQ(exported(silentMovie(3), {{2, 2.1}, {1, 1.1}, {1.05, 1.2}}).numbers(),
            numbers(60, 63) + numbers(30, 33) + numbers(31, 36));
}

TEST_F(MovieExportTest, CutsThatTouchLoseNothing) {
  EXPECT_EQ(exported(silentMovie(2), {{0, 0.5}, {0.5, 1}, {1, 2}}).numbers(), numbers(0, 60));
}

TEST_F(MovieExportTest, ACutBeginsWithTheFrameThatIsVisibleThen) {
  const MadeMovie slow{.times = {0, 0.3, 1.7, 3.1}, .end = 4};
  const auto movie = exported(slow, {{1, 2}, {2.5, 3.5}});
  EXPECT_EQ(movie.numbers(), (std::vector{1, 2, 2, 3}));
  const std::vector times{0.0, 0.7, 1.0, 1.6};
  for (std::size_t i = 0; i < times.size(); ++i) EXPECT_NEAR(movie.pictures[i].time, times[i], 1e-4);
  EXPECT_NEAR(movie.duration, 2, 0.001);
}

TEST_F(MovieExportTest, TheLastFrameStaysUntilTheEndOfTheCut) {
  const MadeMovie still{.times = {0, 0.1}, .end = 5};
  const auto movie = exported(still, {{1, 3}});
  EXPECT_THAT(movie.numbers(), ElementsAre(1));
  EXPECT_NEAR(movie.duration, 2, 0.001);
  EXPECT_NEAR(movie.picturesEnd, 2, 0.001);
}

TEST_F(MovieExportTest, FramesKeepTheirUnevenTimes) {
  const MadeMovie uneven{.times = {0, 0.01, 0.5, 0.52, 1.3}, .end = 2};
  const auto movie = exported(uneven, {{0, 2}});
  EXPECT_EQ(movie.numbers(), numbers(0, 5));
  for (std::size_t i = 0; i < 5; ++i) EXPECT_NEAR(movie.pictures[i].time, uneven.times[i], 1e-4);
}

TEST_F(MovieExportTest, SoundIsCutToTheSample) {
  MadeMovie movie = silentMovie(4);
  movie.sound = {.sampleRate = 48000, .channels = 2, .end = 4, .clicks = {0.25, 1.5, 2.25, 3.5}};
  const auto cut = exported(movie, {{1.4, 1.6}, {2.1, 2.4}});
  EXPECT_NEAR(cut.soundEnd(), 0.5, 0.5 / 48000);
  ASSERT_THAT(cut.clicks(), SizeIs(2));
  EXPECT_NEAR(cut.clicks()[0], 0.1, 0.003);
  EXPECT_NEAR(cut.clicks()[1], 0.35, 0.003);
}

TEST_F(MovieExportTest, SoundStaysInStepOverManyCuts) {
  // Each click sounds with the picture at which it began; the lengths are no whole number of samples or pictures.
  MadeMovie movie{.times = steadyTimes(12), .end = 12};
  movie.sound = {.sampleRate = 44100, .channels = 1, .end = 12, .clicks = {}};
  Stretches stretches;
  for (int i = 0; i < 24; ++i) {
    const double click = 0.2 + i * 0.49;
    movie.sound->clicks.push_back(click);
    stretches.push_back({click - 0.1003, click + 0.2137});
  }
  const auto cut = exported(movie, stretches);
  ASSERT_THAT(cut.clicks(), SizeIs(24));
  for (std::size_t i = 0; i < 24; ++i) {
    const double expected = static_cast<double>(i) * 0.314 + 0.1003;
    EXPECT_NEAR(cut.clicks()[i], expected, 0.003) << i;
    // The picture of that moment, by its number.
    const auto next = std::ranges::upper_bound(cut.pictures, expected, {}, &ReadMovie::Picture::time);
    EXPECT_EQ(std::prev(next)->number, static_cast<int>(movie.sound->clicks[i] * 30 + 1e-6)) << i;
  }
  EXPECT_NEAR(cut.soundEnd(), 24 * 0.314, 0.001);
  EXPECT_NEAR(cut.picturesEnd, 24 * 0.314, 0.001);
}

TEST_F(MovieExportTest, AMovieWithoutSoundStaysWithout) {
  const auto movie = exported(silentMovie(1), {{0, 1}});
  EXPECT_EQ(movie.sampleRate, 0);
  EXPECT_EQ(movie.numbers(), numbers(0, 30));
}

TEST_F(MovieExportTest, SoundWithoutPicturesIsCutAsWell) {
  const MadeMovie::Sound sound{.sampleRate = 22050, .channels = 1, .end = 3, .clicks = {0.5, 2}};
  const auto movie = exported({.sound = sound}, {{0.4, 0.6}, {1.9, 2.2}});
  EXPECT_THAT(movie.pictures, IsEmpty());
  EXPECT_EQ(movie.sampleRate, 22050);
  EXPECT_NEAR(movie.soundEnd(), 0.5, 0.5 / 22050);
  ASSERT_THAT(movie.clicks(), SizeIs(2));
  EXPECT_NEAR(movie.clicks()[1], 0.3, 0.003);
}

TEST_F(MovieExportTest, SoundThatEndsEarlyIsFollowedBySilence) {
  MadeMovie movie = silentMovie(3);
  movie.sound = {.end = 1, .clicks = {0.25}};
  const auto cut = exported(movie, {{0.5, 2}, {0.2, 0.5}});
  ASSERT_THAT(cut.clicks(), SizeIs(1));
  EXPECT_NEAR(cut.clicks().front(), 1.55, 0.003);
  EXPECT_EQ(cut.numbers(), numbers(15, 60) + numbers(6, 15));
}

TEST_F(MovieExportTest, PicturesThatEndBeforeTheSoundEndThere) {
  MadeMovie movie = silentMovie(1);
  movie.sound = {.end = 3, .clicks = {2.5}};
  const auto cut = exported(movie, {{0.5, 3}});
  EXPECT_EQ(cut.numbers(), numbers(15, 30));
  EXPECT_NEAR(cut.picturesEnd, 0.5, 0.001);
  ASSERT_THAT(cut.clicks(), SizeIs(1));
  EXPECT_NEAR(cut.clicks().front(), 2, 0.003);
  EXPECT_NEAR(cut.duration, 2.5, 0.001);
}

TEST_F(MovieExportTest, AStretchBeyondTheEndAddsNothing) {
  const auto movie = exported(silentMovie(2), {{1.5, 3}});
  EXPECT_EQ(movie.numbers(), numbers(45, 60));
  EXPECT_NEAR(movie.duration, 0.5, 0.001);
}

TEST_F(MovieExportTest, WhereNothingIsLeftThereIsNoFile) {
  writeMovie(source_, silentMovie(1));
  EXPECT_EQ(errorOf({{5, 6}}), "Nothing of the recording lies in that stretch");
  EXPECT_EQ(errorOf({}), "Nothing of the recording lies in that stretch");
  EXPECT_THAT(files(), ElementsAre("source.mov"));
}

TEST_F(MovieExportTest, KeepsHowPicturesAreTurned) {
  MadeMovie turned = silentMovie(1);
  turned.displayMatrix = {0, 65536, 0, -65536, 0, 0, 120 << 16, 0, 1 << 30};
  const auto movie = exported(turned, {{0.5, 1}});
  EXPECT_EQ(movie.displayMatrix, turned.displayMatrix);
  EXPECT_EQ(movie.size, turned.size);
  EXPECT_EQ(movie.numbers(), numbers(15, 30));
}

TEST_F(MovieExportTest, LeavesOutAnOddColumnAndRow) {
  MadeMovie odd = silentMovie(1);
  odd.size = {161, 121};
  const auto movie = exported(odd, {{0, 1}});
  EXPECT_EQ(movie.size, QSize(160, 120));
  EXPECT_EQ(movie.numbers(), numbers(0, 30));
}

TEST_F(MovieExportTest, ASizeThatNothingEncodesIsAnError) {
  MadeMovie thin = silentMovie(1);
  thin.size = {1, 64};
  writeMovie(source_, thin);
  EXPECT_EQ(errorOf({{0, 1}}), "Could not prepare the recording export");
  EXPECT_THAT(files(), ElementsAre("source.mov"));
}

TEST_F(MovieExportTest, PutsTheIndexInFront) {
  writeMovie(source_, silentMovie(1));
  EXPECT_EQ(errorOf({{0, 1}}), "");
  const auto bytes = contentOf(target_);
  EXPECT_EQ(bytes.find("ftypqt"), 4U);
  EXPECT_LT(bytes.find("moov"), bytes.find("mdat"));
}

TEST_F(MovieExportTest, ReplacesNothing) {
  writeMovie(source_, silentMovie(1));
  folder_.write("target.mov", "somebody else's");
  EXPECT_EQ(errorOf({{0, 1}}), "A file of that name is already there");
  EXPECT_EQ(contentOf(target_), "somebody else's");
  EXPECT_THAT(files(), ElementsAre("source.mov", "target.mov"));
}

TEST_F(MovieExportTest, DoesNotWriteOverItsSource) {
  writeMovie(source_, silentMovie(1));
  const auto bytes = contentOf(source_);
  EXPECT_TRUE(MediaFile::exportMovie(source_, Stretches{{0, 1}}, source_, {}));
  EXPECT_EQ(contentOf(source_), bytes);
}

TEST_F(MovieExportTest, TakesTheNameFromTheStartAndGivesItBackWhenStopped) {
  writeMovie(source_, silentMovie(4));
  std::stop_source stop;
  bool wasTaken = false;
  const MediaFile::Supervision supervision{.stop = stop.get_token(), .progress = [&](double share) {
                                             wasTaken = wasTaken || std::filesystem::exists(target_);
                                             if (share > 0.25) stop.request_stop();
                                           }};
  const auto failure = MediaFile::exportMovie(source_, Stretches{{0, 4}}, target_, supervision);
  EXPECT_EQ(failure, Error{"The export was stopped"});
  EXPECT_TRUE(wasTaken);
  EXPECT_THAT(files(), ElementsAre("source.mov"));
}

TEST_F(MovieExportTest, WhatSomebodyPutInItsPlaceStays) {
  writeMovie(source_, silentMovie(1));
  const MediaFile::Supervision supervision{.progress = [&](double) {
    if (contentOf(target_).empty()) {
      std::filesystem::remove(target_);
      folder_.write("target.mov", "somebody else's");
    }
  }};
  const auto failure = MediaFile::exportMovie(source_, Stretches{{0, 1}}, target_, supervision);
  EXPECT_EQ(failure, Error{"A file of that name is already there"});
  EXPECT_EQ(contentOf(target_), "somebody else's");
  EXPECT_THAT(files(), ElementsAre("source.mov", "target.mov"));
}

TEST_F(MovieExportTest, ProgressGrowsToTheEnd) {
  MadeMovie movie = silentMovie(2);
  movie.sound = {.end = 2, .clicks = {1}};
  writeMovie(source_, movie);
  std::vector<double> shares;
  const MediaFile::Supervision supervision{.progress = [&](double share) { shares.push_back(share); }};
  EXPECT_FALSE(MediaFile::exportMovie(source_, Stretches{{0, 0.7}, {1, 2}}, target_, supervision));
  ASSERT_FALSE(shares.empty());
  EXPECT_TRUE(std::ranges::is_sorted(shares));
  EXPECT_LT(shares.front(), 0.1);
  EXPECT_EQ(shares.back(), 1);
}

TEST_F(MovieExportTest, AFileThatIsNoMovieIsAnErrorAndLeavesNothing) {
  EXPECT_EQ(errorOf({{0, 1}}), "The file is not there");
  folder_.write("source.mov", "");
  EXPECT_EQ(errorOf({{0, 1}}), "The file is damaged or no recording");
  folder_.write("source.mov", std::string(100'000, 'x'));
  EXPECT_EQ(errorOf({{0, 1}}), "The file is damaged or no recording");
  std::filesystem::remove(source_);
  std::filesystem::create_directory(source_);
  EXPECT_EQ(errorOf({{0, 1}}), "It is not a file");
  EXPECT_THAT(files(), ElementsAre("source.mov"));
}

TEST_F(MovieExportTest, OpensNoFilesThatAFileNames) {
  const auto other = folder_.path("other.mov");
  writeMovie(other, silentMovie(1));
  folder_.write("source.mov", "ffconcat version 1.0\nfile other.mov\n");
  EXPECT_EQ(errorOf({{0, 1}}), "The file is damaged or no recording");
  folder_.write("source.mov", "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nother.mov\n#EXT-X-ENDLIST\n");
  EXPECT_EQ(errorOf({{0, 1}}), "The file is damaged or no recording");
}

TEST_F(MovieExportTest, OfAMovieCutInHalfGivesWhatIsThere) {
  MadeMovie movie = silentMovie(4);
  movie.sound = {.end = 4, .clicks = {0.5}};
  writeMovie(source_, movie);
  std::filesystem::resize_file(source_, std::filesystem::file_size(source_) / 2);
  const auto cut = exportedSource({{0, 4}});
  ASSERT_GT(cut.pictures.size(), 10U);
  EXPECT_LT(cut.pictures.size(), 100U);
  EXPECT_EQ(cut.numbers(), numbers(0, static_cast<int>(cut.pictures.size())));
  EXPECT_THAT(cut.clicks(), SizeIs(1));
}

TEST_F(MovieExportTest, AFolderThatTakesNoFilesIsAnErrorInWords) {
  writeMovie(source_, silentMovie(1));
  const auto failure = MediaFile::exportMovie(source_, Stretches{{0, 1}}, "/proc/target.mov", {});
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->message, "The file is not there");
}

}  // namespace
}  // namespace Nimbrel
