#include "Recording/RecordingProcessor.h"

#include "Support/GifReading.h"
#include "Support/Movies.h"
#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <numeric>
#include <stop_token>
#include <string>
#include <vector>

namespace Nimbrel {
namespace {

using ::testing::AnyOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::SizeIs;
using namespace Testing;

/// The number that a frame shows.
int numberOf(const QImage& image) {
  int number = 0;
  for (int field = 0; field < 16; ++field) {
    const int x = (2 * (field % 4) + 1) * image.width() / 8;
    const int y = (2 * (field / 4) + 1) * image.height() / 8;
    if (qGreen(image.pixel(x, y)) > 128) number |= 1 << field;
  }
  return number;
}

std::vector<int> numbersOf(const StoredGif& gif) {
  std::vector<int> numbers;
  std::ranges::transform(gif.images, std::back_inserter(numbers),
                         [](const StoredGifImage& image) { return numberOf(image.shown); });
  return numbers;
}

class RecordingGifTest : public ::testing::Test {
 protected:
  void writeRecording(double end, int framesPerSecond = 30) const {
    writeMovie(path_, {.times = steadyTimes(end, framesPerSecond), .end = end});
  }

  [[nodiscard]] StoredGif made(double start, double end, int fps, bool removeSilence = false) const {
    const auto path = RecordingProcessor::gif(path_, start, end, fps, removeSilence, {});
    EXPECT_TRUE(path) << path.error().message;
    return path ? readGif(path.value()) : StoredGif{};
  }

  [[nodiscard]] std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
      names.push_back(entry.path().filename());
    }
    std::ranges::sort(names);
    return names;
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.path("Recording.mov");
};

TEST_F(RecordingGifTest, ShowsTheWindowAtItsSpeed) {
  writeRecording(4);
  const auto gif = made(1, 2, 10);
  EXPECT_EQ(gif.size, QSize(160, 120));
  EXPECT_TRUE(gif.loopsForEver);
  EXPECT_THAT(numbersOf(gif), ElementsAre(30, 33, 36, 39, 42, 45, 48, 51, 54, 57));
  EXPECT_THAT(gif.delays(), Each(10));
}

TEST_F(RecordingGifTest, SpreadsTheFramesOfALongRecording) {
  writeRecording(60, 5);
  const auto gif = made(0, 60, 5);
  ASSERT_THAT(gif.images, SizeIs(180));
  const auto numbers = numbersOf(gif);
  for (int i = 0; i < 180; ++i) EXPECT_EQ(numbers[static_cast<std::size_t>(i)], i * 5 / 3) << i;
  const auto delays = gif.delays();
  EXPECT_THAT(delays, Each(AnyOf(33, 34)));
  EXPECT_EQ(std::accumulate(delays.begin(), delays.end(), 0), 6000);
}

TEST_F(RecordingGifTest, HasOneFrameOfAMoment) {
  writeMovie(path_, {.times = {0}, .end = 0.05});
  EXPECT_THAT(made(0, 0.05, 10).delays(), ElementsAre(10));
}

TEST_F(RecordingGifTest, TakesAnyRate) {
  writeRecording(1);
  EXPECT_THAT(made(0, 1, 0).delays(), ElementsAre(100));
  EXPECT_THAT(made(0, 1, -3).delays(), ElementsAre(100));
  const auto delays = made(0, 1, 1'000'000).delays();
  EXPECT_EQ(std::accumulate(delays.begin(), delays.end(), 0), 100);
}

TEST_F(RecordingGifTest, ShowsTheLastPictureWhenTheWindowReachesPastTheEnd) {
  writeRecording(1);
  EXPECT_THAT(numbersOf(made(7, 9, 20)), ElementsAre(29, 29));
}

TEST_F(RecordingGifTest, LeavesOutWhatIsSilent) {
  writeMovie(path_, {.times = steadyTimes(6, 10),
                     .end = 6,
                     .sound = MadeMovie::Sound{.sampleRate = 48000, .channels = 2, .end = 6, .clicks = {1, 4}}});
  const auto kept = RecordingProcessor::composition(path_, 0, 6, true).value();
  ASSERT_THAT(kept.stretches, SizeIs(2));
  const auto numbers = numbersOf(made(0, 6, 30, true));
  EXPECT_EQ(numbers.size(), static_cast<std::size_t>(kept.duration() * 30));
  EXPECT_EQ(numbers.front(), static_cast<int>(kept.stretches[0].start * 10));
  EXPECT_EQ(numbers.back(), static_cast<int>((kept.stretches[1].end - 1.0 / 30) * 10));
  EXPECT_TRUE(std::ranges::is_sorted(numbers));
  EXPECT_TRUE(std::ranges::none_of(numbers, [](int number) { return number >= 14 && number <= 37; }));
}

TEST_F(RecordingGifTest, StandsBesideTheRecordingUnderAFreeName) {
  writeRecording(0.2);
  EXPECT_EQ(RecordingProcessor::gif(path_, 0, 1, 5, false, {}).value(), folder_.path("Recording.gif"));
  EXPECT_EQ(RecordingProcessor::gif(path_, 0, 1, 5, false, {}).value(), folder_.path("Recording 2.gif"));
  EXPECT_THAT(files(), ElementsAre("Recording 2.gif", "Recording.gif", "Recording.mov"));
}

TEST_F(RecordingGifTest, TakesItsNameFromTheStart) {
  writeRecording(1);
  std::vector<std::uintmax_t> sizes;
  const auto path =
      RecordingProcessor::gif(path_, 0, 1, 5, false, {.progress = [&](double) {
                                std::error_code error;
                                sizes.push_back(std::filesystem::file_size(folder_.path("Recording.gif"), error));
                              }});
  ASSERT_TRUE(path);
  EXPECT_THAT(sizes, ElementsAre(0, 0, 0, 0, 0)) << "there, but with nothing in it that somebody might take for a GIF";
  EXPECT_THAT(files(), ElementsAre("Recording.gif", "Recording.mov"));
}

TEST_F(RecordingGifTest, TellsHowFarItIs) {
  writeRecording(1);
  std::vector<double> shares;
  const auto path =
      RecordingProcessor::gif(path_, 0, 1, 4, false, {.progress = [&](double share) { shares.push_back(share); }});
  EXPECT_TRUE(path);
  EXPECT_THAT(shares, ElementsAre(0.25, 0.5, 0.75, 1));
}

TEST_F(RecordingGifTest, LeavesNothingWhenItIsStopped) {
  writeRecording(2);
  std::stop_source source;
  int frames = 0;
  const auto path =
      RecordingProcessor::gif(path_, 0, 2, 10, false, {.stop = source.get_token(), .progress = [&](double) {
                                                         if (++frames == 3) source.request_stop();
                                                       }});
  ASSERT_FALSE(path);
  EXPECT_EQ(path.error().message, "The export was stopped");
  EXPECT_EQ(frames, 3);
  EXPECT_THAT(files(), ElementsAre("Recording.mov"));
}

TEST_F(RecordingGifTest, StopsWhileItSearchesForSound) {
  writeMovie(path_, {.times = {0}, .end = 1, .sound = MadeMovie::Sound{.end = 1, .clicks = {0.5}}});
  std::stop_source source;
  source.request_stop();
  const auto path = RecordingProcessor::gif(path_, 0, 1, 5, true, {.stop = source.get_token()});
  ASSERT_FALSE(path);
  EXPECT_EQ(path.error().message, "The search for sound was stopped");
  EXPECT_THAT(files(), ElementsAre("Recording.mov"));
}

TEST_F(RecordingGifTest, PassesOnWhyTheRecordingCannotBeRead) {
  EXPECT_EQ(RecordingProcessor::gif(path_, 0, 1, 5, false, {}).error().message, "The file is not there");
  folder_.write("Recording.mov", "no movie");
  EXPECT_EQ(RecordingProcessor::gif(path_, 0, 1, 5, false, {}).error().message, "The file is damaged or no recording");
  writeMovie(path_, {.sound = MadeMovie::Sound{.end = 1}});
  EXPECT_EQ(RecordingProcessor::gif(path_, 0, 1, 5, false, {}).error().message, "The recording has no pictures");
  EXPECT_THAT(files(), ElementsAre("Recording.mov"));
}

TEST_F(RecordingGifTest, TellsThatItCannotMakeTheFile) {
  const auto folder = folder_.makeFolder("disk");
  path_ = folder + "/Recording.mov";
  folder_.write("disk/Recording.mov", "no movie");  // which it would find out behind that
  const int outcome = onReadOnlyDisk(folder, [&] {
    const auto path = RecordingProcessor::gif(path_, 0, 1, 5, false, {});
    return !path && path.error().message == "Could not create the GIF" ? 0 : 1;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(RecordingGifTest, TellsThatTheDiskIsFullAndLeavesNothing) {
  const auto folder = folder_.makeFolder("disk");
  writeMovie(path_, {.size = {800, 600}, .times = steadyTimes(3), .end = 3});
  const int outcome = onSmallDisk(folder, 24 << 10, [&] {
    std::error_code error;
    std::filesystem::create_symlink(path_, folder + "/Recording.mov", error);
    const auto path = RecordingProcessor::gif(folder + "/Recording.mov", 0, 3, 30, false, {});
    if (path || path.error().message != "Could not finish the GIF") return 1;
    return std::filesystem::exists(folder + "/Recording.gif") ? 2 : 0;
  });
  EXPECT_EQ(outcome, 0);
}

}  // namespace
}  // namespace Nimbrel
