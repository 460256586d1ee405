#include "Screencapture/FrameRoll.h"

#include "Platform/MetadataStore.h"
#include "Support/Movies.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace Nimbrel::Screencapture {

namespace {

using namespace std::chrono_literals;
using ::testing::Each;
using ::testing::ElementsAre;

constexpr FrameRoll::Time start{1000s};

QImage plain(const QSize& size, QColor colour) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(colour);
  return image;
}

class FrameRollTest : public ::testing::Test {
 protected:
  FrameRoll roll() {
    return {path_, "window", [this] {
              ++soundsOpened_;
              return nullptr;
            }};
  }

  Testing::TemporaryFolder folder_;
  std::string path_ = folder_.path("movie.mov");
  int soundsOpened_ = 0;
};

}  // namespace

TEST_F(FrameRollTest, TheFirstFrameGivesTheSize) {
  auto movie = roll();
  EXPECT_EQ(movie.look({}, start), std::nullopt);
  EXPECT_FALSE(movie.hasBegun());
  EXPECT_FALSE(std::filesystem::exists(path_));
  EXPECT_EQ(movie.look(Testing::numberedPicture(5, {161, 121}), start + 1s), std::nullopt);
  EXPECT_TRUE(movie.hasBegun());
  EXPECT_EQ(movie.look({}, start + 2s), std::nullopt);
  EXPECT_EQ(movie.finish(start + 3s), std::nullopt);
  const auto read = Testing::readMovie(path_);
  EXPECT_EQ(read.size, QSize(160, 120));
  EXPECT_THAT(read.numbers(), Each(5));
  EXPECT_NEAR(read.picturesEnd, 2, 0.01);
  EXPECT_EQ(MetadataStore::screenCaptureType(path_), "window");
  EXPECT_EQ(soundsOpened_, 1);
}

TEST_F(FrameRollTest, FramesOfOtherSizesAreFittedIntoTheFirst) {
  auto movie = roll();
  EXPECT_EQ(movie.look(Testing::numberedPicture(1, {160, 120}), start), std::nullopt);
  EXPECT_EQ(movie.look(Testing::numberedPicture(2, {320, 240}), start + 1s), std::nullopt);
  EXPECT_EQ(movie.finish(start + 2s), std::nullopt);
  const auto read = Testing::readMovie(path_);
  EXPECT_EQ(read.size, QSize(160, 120));
  EXPECT_THAT(read.numbers(), ElementsAre(1, 2));
}

TEST_F(FrameRollTest, WithoutAFrameThereIsNoMovie) {
  auto movie = roll();
  EXPECT_EQ(movie.look({}, start), std::nullopt);
  EXPECT_TRUE(movie.finish(start + 1s));
  EXPECT_FALSE(std::filesystem::exists(path_));
  EXPECT_EQ(soundsOpened_, 0);
}

TEST_F(FrameRollTest, WhatIsTooSmallForAMovieIsAnError) {
  auto movie = roll();
  EXPECT_TRUE(movie.look(plain({1, 100}, Qt::red), start));
  EXPECT_TRUE(movie.look(plain({100, 100}, Qt::red), start + 1s)) << "it goes on after an error";
  EXPECT_TRUE(movie.finish(start + 1s));
  EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(FrameRollTest, NothingThatStandsThereIsReplaced) {
  folder_.write("movie.mov", "another movie");
  auto movie = roll();
  EXPECT_TRUE(movie.look(plain({160, 120}, Qt::red), start));
  EXPECT_TRUE(movie.finish(start + 1s));
  EXPECT_EQ(Testing::contentOf(path_), "another movie");
}

TEST(FittedInto, AFrameOfTheSizeIsTheSame) {
  const auto frame = plain({64, 48}, Qt::blue);
  EXPECT_EQ(fittedInto({64, 48}, frame), frame);
  EXPECT_EQ(fittedInto({64, 48}, plain({65, 49}, Qt::blue)), frame);
}

TEST(FittedInto, AnotherShapeIsShownWholeInTheMiddleOfBlack) {
  const auto fitted = fittedInto({160, 120}, plain({320, 120}, Qt::green));
  EXPECT_EQ(fitted.size(), QSize(160, 120));
  EXPECT_EQ(fitted.pixelColor(2, 60), QColor(Qt::green));
  EXPECT_EQ(fitted.pixelColor(157, 60), QColor(Qt::green));
  EXPECT_EQ(fitted.pixelColor(80, 25), QColor(Qt::black));
  EXPECT_EQ(fitted.pixelColor(80, 95), QColor(Qt::black));
}

TEST(FittedInto, ASmallerFrameIsMadeLarger) {
  const auto fitted = fittedInto({100, 100}, plain({10, 20}, Qt::white));
  EXPECT_EQ(fitted.size(), QSize(100, 100));
  EXPECT_EQ(fitted.pixelColor(50, 2), QColor(Qt::white));
  EXPECT_EQ(fitted.pixelColor(10, 50), QColor(Qt::black));
}

TEST(FittedInto, ALineIsStillFitted) {
  EXPECT_EQ(fittedInto({100, 100}, plain({30'000, 1}, Qt::white)).size(), QSize(100, 100));
}

}  // namespace Nimbrel::Screencapture
