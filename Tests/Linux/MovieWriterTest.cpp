#include "Platform/MovieWriter.h"

#include "Support/Movies.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;
using namespace Testing;

constexpr QSize size(160, 120);

class MovieWriterTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::unique_ptr<MovieWriter> open(const MovieWriter::Format& format) const {
    auto writer = MovieWriter::open(path_, format);
    EXPECT_TRUE(writer) << writer.error().message;
    return std::move(writer).value();
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.path("movie.mov");
};

std::vector<int> firstNumbers(int count) {
  std::vector<int> numbers(static_cast<std::size_t>(count));
  std::iota(numbers.begin(), numbers.end(), 0);
  return numbers;
}

TEST_F(MovieWriterTest, ShowsEachFrameFromItsTimeUntilTheNext) {
  const auto writer = open({.size = size});
  const std::vector times{0.0, 0.04, 0.5, 1.25, 1.2501, 3.0};
  for (std::size_t i = 0; i < times.size(); ++i) {
    EXPECT_FALSE(writer->addFrame(numberedPicture(static_cast<int>(i), size), times[i]));
  }
  EXPECT_FALSE(writer->finish(4));
  const auto movie = readMovie(path_);
  EXPECT_EQ(movie.numbers(), firstNumbers(6));
  for (std::size_t i = 0; i < times.size(); ++i) EXPECT_NEAR(movie.pictures.at(i).time, times[i], 1e-4);
  EXPECT_NEAR(movie.duration, 4, 0.001);
  EXPECT_NEAR(movie.picturesEnd, 4, 0.001);
}

TEST_F(MovieWriterTest, DropsAFrameThatIsNotLaterThanTheOneBefore) {
  const auto writer = open({.size = size});
  for (const auto& [number, time] : {std::pair(0, 0.0), {1, 0.5}, {2, 0.5}, {3, 0.2}, {4, 0.6}}) {
    EXPECT_FALSE(writer->addFrame(numberedPicture(number, size), time));
  }
  EXPECT_FALSE(writer->finish(1));
  EXPECT_THAT(readMovie(path_).numbers(), ElementsAre(0, 1, 4));
}

TEST_F(MovieWriterTest, KeepsSoundAndPicturesInStep) {
  const auto writer = open({.size = size, .sound = MovieWriter::Sound{.sampleRate = 44100, .channels = 2}});
  const MadeMovie::Sound sound{.sampleRate = 44100, .channels = 2, .end = 3, .clicks = {0.5, 1, 2.5}};
  const auto samples = clickingSound(sound);
  for (int i = 0; i < 90; ++i) {
    EXPECT_FALSE(writer->addFrame(numberedPicture(i, size), i / 30.0));
    EXPECT_FALSE(writer->addSound(std::span(samples).subspan(static_cast<std::size_t>(i) * 2940, 2940), i / 30.0));
  }
  EXPECT_FALSE(writer->finish(3));
  const auto movie = readMovie(path_);
  EXPECT_EQ(movie.numbers(), firstNumbers(90));
  EXPECT_EQ(movie.pictures.front().time, 0);
  EXPECT_NEAR(movie.soundStart, 0, 0.0005);
  EXPECT_NEAR(movie.soundEnd(), 3, 0.0005);
  ASSERT_THAT(movie.clicks(), SizeIs(3));
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(movie.clicks()[i], sound.clicks[i], 0.003);
}

TEST_F(MovieWriterTest, FillsAGapInTheSoundWithSilence) {
  const auto writer = open({.size = size, .sound = MovieWriter::Sound{.sampleRate = 48000, .channels = 1}});
  const auto click = clickingSound({.sampleRate = 48000, .channels = 1, .end = 0.1, .clicks = {0.05}});
  EXPECT_FALSE(writer->addFrame(numberedPicture(1, size), 0));
  EXPECT_FALSE(writer->addSound(click, 0.4));
  EXPECT_FALSE(writer->addSound(click, 0.5));
  EXPECT_FALSE(writer->addSound(click, 1.7));
  EXPECT_FALSE(writer->finish(2));
  const auto clicks = readMovie(path_).clicks();
  ASSERT_THAT(clicks, SizeIs(3));
  EXPECT_NEAR(clicks[0], 0.45, 0.003);
  EXPECT_NEAR(clicks[1], 0.55, 0.003);
  EXPECT_NEAR(clicks[2], 1.75, 0.003);
}

TEST_F(MovieWriterTest, JoinsSoundWhoseTimesAreALittleOff) {
  const auto writer = open({.size = size, .sound = MovieWriter::Sound{.sampleRate = 48000, .channels = 1}});
  const auto click = clickingSound({.sampleRate = 48000, .channels = 1, .end = 0.1, .clicks = {0.05}});
  EXPECT_FALSE(writer->addFrame(numberedPicture(1, size), 0));
  for (int i = 0; i < 10; ++i) EXPECT_FALSE(writer->addSound(click, i * 0.1 + (i % 2 == 0 ? 0.01 : -0.01)));
  EXPECT_FALSE(writer->finish(1));
  const auto movie = readMovie(path_);
  EXPECT_NEAR(movie.soundEnd(), 1, 0.0005);
  ASSERT_THAT(movie.clicks(), SizeIs(10));
  for (std::size_t i = 0; i < 10; ++i) EXPECT_NEAR(movie.clicks()[i], static_cast<double>(i) * 0.1 + 0.05, 0.003);
}

TEST_F(MovieWriterTest, IsPlainInTheEndWithItsIndexInFront) {
  const auto writer = open({.size = size});
  for (int i = 0; i < 60; ++i) EXPECT_FALSE(writer->addFrame(numberedPicture(i, size), i / 30.0));
  EXPECT_FALSE(writer->finish(2));
  const auto bytes = contentOf(path_);
  EXPECT_EQ(bytes.find("moof"), std::string::npos);
  EXPECT_LT(bytes.find("moov"), bytes.find("mdat"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.path()), {}), 1);
}

TEST_F(MovieWriterTest, KeepsThePermissionsThatTheFileWasMadeWith) {
  const auto writer = open({.size = size});
  const auto permissions = std::filesystem::status(path_).permissions();
  EXPECT_FALSE(writer->addFrame(numberedPicture(1, size), 0));
  EXPECT_FALSE(writer->finish(1));
  EXPECT_EQ(std::filesystem::status(path_).permissions(), permissions);
}

TEST_F(MovieWriterTest, WhatWasWrittenBeforeACrashCanBePlayed) {
  const auto copy = folder_.path("copy.mov");
  const auto writer = open({.size = size, .sound = MovieWriter::Sound{}});
  const auto samples = clickingSound({.end = 5, .clicks = {1, 2}});
  for (int i = 0; i < 150; ++i) {
    EXPECT_FALSE(writer->addFrame(numberedPicture(i, size), i / 30.0));
    EXPECT_FALSE(writer->addSound(std::span(samples).subspan(static_cast<std::size_t>(i) * 3200, 3200), i / 30.0));
  }
  std::filesystem::copy_file(path_, copy);
  const auto movie = readMovie(copy);
  ASSERT_GE(movie.pictures.size(), 100U);
  EXPECT_EQ(movie.numbers(), firstNumbers(static_cast<int>(movie.pictures.size())));
  EXPECT_NEAR(movie.pictures.front().time, 0, 0.0005);
  EXPECT_NEAR(movie.duration, movie.picturesEnd, 0.1);
  ASSERT_THAT(movie.clicks(), SizeIs(2));
  EXPECT_NEAR(movie.clicks().front(), 1, 0.003);
}

TEST_F(MovieWriterTest, GoesOnWhereASourceOfSoundStaysSilent) {
  const auto copy = folder_.path("copy.mov");
  const auto writer = open({.size = size, .sound = MovieWriter::Sound{}});
  for (int i = 0; i < 60; ++i) EXPECT_FALSE(writer->addFrame(numberedPicture(i, size), i / 10.0));
  std::filesystem::copy_file(path_, copy);
  EXPECT_GE(readMovie(copy).pictures.size(), 20U);
  EXPECT_FALSE(writer->finish(6));
  const auto movie = readMovie(path_);
  EXPECT_EQ(movie.numbers(), firstNumbers(60));
  EXPECT_THAT(movie.clicks(), SizeIs(0));
}

TEST_F(MovieWriterTest, LeavesOutAnOddColumnAndRow) {
  const QSize odd(161, 121);
  const auto writer = open({.size = odd});
  EXPECT_FALSE(writer->addFrame(numberedPicture(77, odd), 0));
  EXPECT_FALSE(writer->finish(1));
  const auto movie = readMovie(path_);
  EXPECT_EQ(movie.size, QSize(160, 120));
  EXPECT_THAT(movie.numbers(), ElementsAre(77));
}

TEST_F(MovieWriterTest, TakesImagesOfAnyForm) {
  const auto writer = open({.size = size});
  const auto picture = numberedPicture(4660, size);
  int second = 0;
  for (const auto format : {QImage::Format_ARGB32_Premultiplied, QImage::Format_Grayscale8, QImage::Format_RGB888}) {
    EXPECT_FALSE(writer->addFrame(picture.convertToFormat(format), second++));
  }
  EXPECT_FALSE(writer->finish(second));
  EXPECT_THAT(readMovie(path_).numbers(), ElementsAre(4660, 4660, 4660));
}

TEST_F(MovieWriterTest, WithoutAFrameThereIsNoMovie) {
  const auto writer = open({.size = size});
  const auto failure = writer->finish(1);
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->message, "Nothing was recorded");
}

TEST_F(MovieWriterTest, FailsWhereTheFileCannotBeMade) {
  const auto writer = MovieWriter::open(folder_.path("missing/movie.mov"), {.size = size});
  ASSERT_FALSE(writer);
  EXPECT_EQ(writer.error().message, "The file is not there");
}

TEST_F(MovieWriterTest, FailsWhenThereIsNothingToEncode) {
  const auto writer = MovieWriter::open(path_, {.size = {1, 100}});
  ASSERT_FALSE(writer);
  EXPECT_EQ(writer.error().message, "The area is too small for a movie");
  EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(MovieWriterTest, OnceItHasFailedItSaysSoAgain) {
  const auto full = MovieWriter::open("/dev/full", {.size = size});
  ASSERT_TRUE(full);
  std::optional<Error> failure;
  for (int i = 0; i < 300 && !failure; ++i) failure = full.value()->addFrame(numberedPicture(i * 40, size), i);
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->message, "No space left on the disk");
  EXPECT_EQ(full.value()->addFrame(numberedPicture(1, size), 1000), failure);
  EXPECT_EQ(full.value()->finish(2000), failure);
}

}  // namespace
}  // namespace Nimbrel
