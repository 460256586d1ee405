#include "Recording/RecordingProcessor.h"

#include "Support/Movies.h"
#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <future>
#include <iterator>
#include <latch>
#include <set>
#include <stop_token>
#include <string>
#include <vector>

namespace Nimbrel {
namespace {

using RecordingProcessor::TimeRange;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace Testing;

class RecordingProcessorTest : public ::testing::Test {
 protected:
  void writeRecording(double end, std::vector<double> clicks) const {
    writeMovie(path_, {.times = steadyTimes(end),
                       .end = end,
                       .sound = MadeMovie::Sound{.sampleRate = 48000, .channels = 2, .end = end, .clicks = clicks}});
  }

  [[nodiscard]] RecordingProcessor::Composition composed(double start, double end, bool removeSilence) const {
    auto result = RecordingProcessor::composition(path_, start, end, removeSilence);
    EXPECT_TRUE(result) << result.error().message;
    return result ? std::move(result).value() : RecordingProcessor::Composition{};
  }

  [[nodiscard]] std::vector<TimeRange> audible() const {
    auto result = RecordingProcessor::audibleRanges(path_);
    EXPECT_TRUE(result) << result.error().message;
    return result ? std::move(result).value() : std::vector<TimeRange>();
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.path("Recording.mov");
  std::string target_ = folder_.path("Trimmed.mov");
};

/// What is found is as coarse as the packets of sound: a click lies within, and no more than two of them around it.
void expectAround(const TimeRange& range, double firstClick, double lastClick) {
  constexpr double packet = 1024.0 / 48000;
  EXPECT_LE(range.start, firstClick - 0.15 + 0.001);
  EXPECT_GE(range.start, firstClick - 0.15 - 2 * packet);
  EXPECT_GE(range.end, lastClick + 0.2 - 0.001);
  EXPECT_LE(range.end, lastClick + 0.2 + 3 * packet);
}

TEST_F(RecordingProcessorTest, TellsTheLengthOfARecording) {
  writeRecording(2, {});
  EXPECT_NEAR(RecordingProcessor::duration(path_).value(), 2, 0.001);
}

TEST_F(RecordingProcessorTest, ALengthIsNeverBelowATenthOfASecond) {
  writeMovie(path_, {.times = {0}, .end = 0.05});
  EXPECT_EQ(RecordingProcessor::duration(path_).value(), 0.1);
}

TEST_F(RecordingProcessorTest, AnUnreadableRecordingIsAnErrorOfEveryOperation) {
  folder_.write("Recording.mov", "no movie");
  const std::string words = "The file is damaged or no recording";
  EXPECT_EQ(RecordingProcessor::duration(path_).error().message, words);
  EXPECT_EQ(RecordingProcessor::audibleRanges(path_).error().message, words);
  EXPECT_EQ(RecordingProcessor::composition(path_, 0, 1, false).error().message, words);
  EXPECT_EQ(RecordingProcessor::composition(path_, 0, 1, true).error().message, words);
  EXPECT_EQ(RecordingProcessor::exportMovie({path_, {{0, 1}}}, target_, {}), Error{words});
  EXPECT_FALSE(std::filesystem::exists(target_));
}

TEST_F(RecordingProcessorTest, FindsWhatIsAudible) {
  writeRecording(5, {0.5, 0.8, 3});
  const auto ranges = audible();
  ASSERT_THAT(ranges, SizeIs(2));
  expectAround(ranges[0], 0.5, 0.8);
  expectAround(ranges[1], 3, 3);
}

TEST_F(RecordingProcessorTest, WithoutSoundNothingIsAudible) {
  writeMovie(path_, {.times = steadyTimes(1), .end = 1});
  EXPECT_THAT(audible(), IsEmpty());
  writeRecording(1, {});
  EXPECT_THAT(audible(), IsEmpty());
}

TEST_F(RecordingProcessorTest, AWindowIsKeptAsItIsUnlessSilenceGoes) {
  writeRecording(3, {1.5});
  EXPECT_EQ(composed(0.5, 2.5, false).source, path_);
  EXPECT_THAT(composed(0.5, 2.5, false).stretches, ElementsAre(TimeRange{0.5, 2.5}));
  EXPECT_NEAR(composed(0.5, 2.5, false).duration(), 2, 1e-9);
}

TEST_F(RecordingProcessorTest, WithoutSilenceTheAudibleStretchesOfTheWindowAreLeft) {
  writeRecording(6, {0.5, 2.5, 5.5});
  const auto stretches = composed(2.4, 5.45, true).stretches;
  ASSERT_THAT(stretches, SizeIs(2));
  EXPECT_EQ(stretches[0].start, 2.4);
  EXPECT_NEAR(stretches[0].end, 2.7, 0.07);
  EXPECT_NEAR(stretches[1].start, 5.35, 0.05);
  EXPECT_EQ(stretches[1].end, 5.45);
}

TEST_F(RecordingProcessorTest, RemovingSilenceNeverLeavesNothing) {
  writeMovie(path_, {.times = steadyTimes(2), .end = 2});
  EXPECT_THAT(composed(0, 2, true).stretches, ElementsAre(TimeRange{0, 2}));
  writeRecording(2, {});
  EXPECT_THAT(composed(0, 2, true).stretches, ElementsAre(TimeRange{0, 2}));
  writeRecording(4, {0.5});
  EXPECT_THAT(composed(2, 3, true).stretches, ElementsAre(TimeRange{2, 3}));
}

TEST_F(RecordingProcessorTest, ExportsTheStretchesOneBehindTheOther) {
  writeRecording(6, {0.5, 2.5, 4.5});
  const auto composition = composed(0, 6, true);
  ASSERT_THAT(composition.stretches, SizeIs(3));
  const auto failure = RecordingProcessor::exportMovie(composition, target_, {});
  EXPECT_FALSE(failure) << failure->message;
  const auto movie = readMovie(target_);
  EXPECT_NEAR(movie.duration, composition.duration(), 0.002);
  ASSERT_THAT(movie.clicks(), SizeIs(3));
  double before = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(movie.clicks()[i], before + 0.5 + 2 * static_cast<double>(i) - composition.stretches[i].start, 0.003);
    before += composition.stretches[i].length();
  }
}

TEST_F(RecordingProcessorTest, ARecordingShorterThanTheShortestStillExports) {
  writeMovie(path_, {.times = {0, 0.02}, .end = 0.05});
  const auto failure = RecordingProcessor::exportMovie(composed(0, 0.1, false), target_, {});
  EXPECT_FALSE(failure) << failure->message;
  EXPECT_THAT(readMovie(target_).numbers(), ElementsAre(0, 1));
}

TEST_F(RecordingProcessorTest, ATrimmedCopyStandsBesideTheRecordingUnderAFreeName) {
  writeRecording(4, {0.5, 3});
  const auto trimmed = [&] { return RecordingProcessor::trimmedCopy(path_, 0.25, 4, true, {}).value(); };
  EXPECT_EQ(trimmed(), folder_.path("Recording.trimmed.mov"));
  EXPECT_EQ(trimmed(), folder_.path("Recording.trimmed 2.mov"));
  const auto movie = readMovie(folder_.path("Recording.trimmed 2.mov"));
  EXPECT_NEAR(movie.duration, composed(0.25, 4, true).duration(), 0.002);
  EXPECT_THAT(movie.clicks(), SizeIs(2));
}

TEST_F(RecordingProcessorTest, TrimmedCopiesThatAreMadeAtOnceGetNamesOfTheirOwn) {
  writeRecording(1, {});
  std::array<std::future<std::string>, 4> copies;
  std::latch start(std::ssize(copies));
  for (auto& copy : copies) {
    copy = std::async(std::launch::async, [&] {
      start.arrive_and_wait();
      const auto path = RecordingProcessor::trimmedCopy(path_, 0, 1, false, {});
      return path ? path.value() : path.error().message;
    });
  }
  std::set<std::string> paths;
  for (auto& copy : copies) paths.insert(copy.get());
  EXPECT_THAT(paths, ElementsAre(folder_.path("Recording.trimmed 2.mov"), folder_.path("Recording.trimmed 3.mov"),
                                 folder_.path("Recording.trimmed 4.mov"), folder_.path("Recording.trimmed.mov")));
}

TEST_F(RecordingProcessorTest, ATrimmedCopyTakesItsNameBeforeItLooksAtTheRecording) {
  const auto folder = folder_.makeFolder("disk");
  folder_.write("disk/Recording.mov", "no movie");
  const int outcome = onReadOnlyDisk(folder, [&] {
    const auto path = RecordingProcessor::trimmedCopy(folder + "/Recording.mov", 0, 1, true, {});
    return !path && path.error().message == "The disk is read-only" ? 0 : 1;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(RecordingProcessorTest, ATrimmedCopyThatIsStoppedLeavesNothing) {
  writeRecording(1, {0.5});
  std::stop_source source;
  source.request_stop();
  const auto search = RecordingProcessor::trimmedCopy(path_, 0, 1, true, {.stop = source.get_token()});
  EXPECT_EQ(search.error().message, "The search for sound was stopped");
  const auto copy = RecordingProcessor::trimmedCopy(path_, 0, 1, false, {.stop = source.get_token()});
  EXPECT_EQ(copy.error().message, "The export was stopped");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path("")), {}), 1) << "the recording";
}

}  // namespace
}  // namespace Nimbrel
