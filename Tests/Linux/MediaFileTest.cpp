#include "Platform/MediaFile.h"

#include "Support/Movies.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace Nimbrel {
namespace {

using namespace Testing;

class MediaFileTest : public ::testing::Test {
 protected:
  struct Heard {
    double start = 0;
    double length = 0;
    std::size_t samples = 0;
    bool isLoud = false;
  };

  [[nodiscard]] std::vector<Heard> heard() const {
    std::vector<Heard> result;
    const auto failure = MediaFile::forEachSoundBuffer(path_, [&](const MediaFile::SoundBuffer& buffer) {
      const bool isLoud =
          std::ranges::any_of(buffer.samples, [](std::int16_t sample) { return std::abs(sample) > 5000; });
      result.push_back({buffer.start, buffer.length.value_or(-1), buffer.samples.size(), isLoud});
    });
    EXPECT_FALSE(failure) << failure->message;
    return result;
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.path("movie.mov");
};

TEST_F(MediaFileTest, TellsHowLongAMoviePlays) {
  writeMovie(path_, {.times = {0, 0.1}, .end = 2.5});
  EXPECT_NEAR(MediaFile::duration(path_).value(), 2.5, 0.001);
  writeMovie(path_, {.times = {0, 0.1}, .end = 1, .sound = MadeMovie::Sound{.end = 3.25}});
  EXPECT_NEAR(MediaFile::duration(path_).value(), 3.25, 0.001);
}

TEST_F(MediaFileTest, TellsThatItCannotReadAFile) {
  EXPECT_EQ(MediaFile::duration(path_).error().message, "The file is not there");
  folder_.write("movie.mov", "");
  EXPECT_EQ(MediaFile::duration(path_).error().message, "The file is damaged or no recording");
  folder_.write("movie.mov", "no movie");
  EXPECT_EQ(MediaFile::duration(path_).error().message, "The file is damaged or no recording");
  const auto failure = MediaFile::forEachSoundBuffer(path_, [](const MediaFile::SoundBuffer&) {});
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->message, "The file is damaged or no recording");
}

TEST_F(MediaFileTest, AMovieWhoseEndIsMissingSoThatItHasNoIndexIsAnError) {
  writeMovie(path_, {.times = steadyTimes(2), .end = 2});
  // The index stands in front; without it nothing can be found.
  std::filesystem::resize_file(path_, 40);
  EXPECT_EQ(MediaFile::duration(path_).error().message, "The file is damaged or no recording");
}

TEST_F(MediaFileTest, HearsTheSoundFromBeginningToEndInOrder) {
  writeMovie(path_, {.times = steadyTimes(1), .end = 1, .sound = MadeMovie::Sound{.end = 3, .clicks = {0.5, 2}}});
  const auto buffers = heard();
  ASSERT_FALSE(buffers.empty());
  EXPECT_NEAR(buffers.front().start, 0, 1e-6);
  for (std::size_t i = 1; i < buffers.size(); ++i) {
    EXPECT_NEAR(buffers[i].start, buffers[i - 1].start + buffers[i - 1].length, 1e-5);
  }
  EXPECT_NEAR(buffers.back().start + buffers.back().length, 3, 1e-4);
  for (const auto& buffer : buffers) {
    EXPECT_EQ(buffer.samples, static_cast<std::size_t>(std::lround(buffer.length * 48000)) * 2);
    const auto covers = [&](double time) { return buffer.start <= time && time < buffer.start + buffer.length; };
    EXPECT_TRUE(buffer.isLoud || !(covers(0.502) || covers(2.002))) << buffer.start;
    EXPECT_FALSE(buffer.isLoud && buffer.start > 0.6 && buffer.start < 1.9) << buffer.start;
  }
}

TEST_F(MediaFileTest, WithoutSoundThereIsNothingToHear) {
  writeMovie(path_, {.times = steadyTimes(1), .end = 1});
  EXPECT_TRUE(heard().empty());
}

TEST_F(MediaFileTest, SoundThatNothingDecodesIsNotHeard) {
  writeMovie(path_, {.times = steadyTimes(1), .end = 1, .sound = MadeMovie::Sound{.end = 1, .clicks = {0.5}}});
  auto bytes = contentOf(path_);
  const auto kind = bytes.find("mp4a");
  ASSERT_NE(kind, std::string::npos);
  folder_.write("movie.mov", bytes.replace(kind, 4, "zzzz").replace(bytes.find("esds"), 4, "zzzz"));
  EXPECT_TRUE(heard().empty());
}

TEST_F(MediaFileTest, PassesOverDamagedSound) {
  writeMovie(path_, {.sound = MadeMovie::Sound{.end = 4, .clicks = {0.5, 3.5}}});
  auto bytes = contentOf(path_);
  const auto middle = bytes.find("mdat") + (bytes.size() - bytes.find("mdat")) / 2;
  std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(middle), 200, '\xFF');
  folder_.write("movie.mov", bytes);
  const auto buffers = heard();
  ASSERT_FALSE(buffers.empty());
  EXPECT_NEAR(buffers.back().start + buffers.back().length, 4, 0.001);
  EXPECT_TRUE(std::ranges::any_of(buffers, [](const Heard& buffer) { return buffer.isLoud && buffer.start > 3.4; }));
}

}  // namespace
}  // namespace Nimbrel
