#include "Platform/MediaFile.h"

#include "Support/Movies.h"
#include "Support/TemporaryFolder.h"

#include <QTransform>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace Nimbrel {
namespace {

using namespace Testing;
using MediaFile::FrameGrabber;
using ::testing::ElementsAre;

class FrameGrabberTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::unique_ptr<FrameGrabber> grabber() const {
    auto opened = FrameGrabber::open(path_);
    EXPECT_TRUE(opened) << opened.error().message;
    return std::move(opened).value();
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.path("movie.mov");
};

/// The number of the picture, as numberedPicture() has drawn it.
int numberAt(FrameGrabber& grabber, double time) {
  const auto image = grabber.frameAt(time);
  if (!image) {
    ADD_FAILURE() << image.error().message;
    return -1;
  }
  return numberIn(image.value());
}

TEST_F(FrameGrabberTest, GivesThePictureThatIsShown) {
  writeMovie(path_, {.times = {0, 0.1, 0.15, 0.8, 0.833, 2}, .end = 3});
  const auto movie = grabber();
  EXPECT_EQ(numberAt(*movie, 0), 0);
  EXPECT_EQ(numberAt(*movie, 0.099), 0);
  EXPECT_EQ(numberAt(*movie, 0.1), 1);
  EXPECT_EQ(numberAt(*movie, 0.149), 1);
  EXPECT_EQ(numberAt(*movie, 0.15), 2);
  EXPECT_EQ(numberAt(*movie, 0.799), 2);
  EXPECT_EQ(numberAt(*movie, 0.81), 3);
  EXPECT_EQ(numberAt(*movie, 1.999), 4);
  EXPECT_EQ(numberAt(*movie, 2), 5);
}

TEST_F(FrameGrabberTest, GivesTheFirstBeforeItAndTheLastBehindIt) {
  writeMovie(path_, {.times = {0.5, 0.6, 0.7}, .end = 0.8, .sound = MadeMovie::Sound{.end = 1}});
  const auto movie = grabber();
  EXPECT_EQ(numberAt(*movie, 0), 0);
  EXPECT_EQ(numberAt(*movie, 0.3), 0);
  EXPECT_EQ(numberAt(*movie, -7), 0);
  EXPECT_EQ(numberAt(*movie, std::nan("")), 0);
  EXPECT_EQ(numberAt(*movie, 5), 2);
  EXPECT_EQ(numberAt(*movie, 1e300), 2);
  EXPECT_EQ(numberAt(*movie, std::numeric_limits<double>::infinity()), 2);
  EXPECT_EQ(numberAt(*movie, -std::numeric_limits<double>::infinity()), 0);
}

TEST_F(FrameGrabberTest, GivesEachPictureOfALongMovieInAnyOrder) {
  writeMovie(path_, {.times = steadyTimes(40, 10), .end = 40});
  const auto movie = grabber();
  for (const int number : {0, 399, 17, 18, 250, 249, 0, 1, 2, 120, 350, 351, 60}) {
    EXPECT_EQ(numberAt(*movie, number / 10.0), number);
    EXPECT_EQ(numberAt(*movie, number / 10.0 + 0.09), number);
  }
}

TEST_F(FrameGrabberTest, GivesEachPictureInTurn) {
  writeMovie(path_, {.times = steadyTimes(10, 30), .end = 10});
  const auto movie = grabber();
  for (int number = 0; number < 300; ++number) EXPECT_EQ(numberAt(*movie, number / 30.0), number);
}

TEST_F(FrameGrabberTest, KeepsThePictureThatWasAskedForBefore) {
  writeMovie(path_, {.times = {0, 1}, .end = 2});
  const auto movie = grabber();
  const auto first = movie->frameAt(0.2).value();
  EXPECT_EQ(movie->frameAt(0.7).value().constBits(), first.constBits()) << "decoded and converted once";
  EXPECT_NE(movie->frameAt(1.2).value(), first);
}

TEST_F(FrameGrabberTest, KeepsOddSizes) {
  writeMovie(path_, {.size = {161, 121}, .times = {0}, .end = 1});
  const auto image = grabber()->frameAt(0).value();
  EXPECT_EQ(image.format(), QImage::Format_RGB32);
  EXPECT_GE(image.width(), 160);
  EXPECT_GE(image.height(), 120);
}

TEST_F(FrameGrabberTest, TurnsPicturesUpright) {
  constexpr std::int32_t one = 1 << 16;
  constexpr std::int32_t unit = 1 << 30;
  struct Case {
    std::array<std::int32_t, 9> matrix;
    QTransform transform;
  };
  const std::array cases{Case{{0, one, 0, -one, 0, 0, 0, 0, unit}, QTransform().rotate(90)},
                         Case{{-one, 0, 0, 0, -one, 0, 0, 0, unit}, QTransform().rotate(180)},
                         Case{{0, -one, 0, one, 0, 0, 0, 0, unit}, QTransform().rotate(270)},
                         Case{{-one, 0, 0, 0, one, 0, 0, 0, unit}, QTransform::fromScale(-1, 1)}};
  constexpr int lopsided = 0b1'0111;
  const auto drawn = numberedPicture(lopsided, {160, 120});
  for (const auto& turned : cases) {
    writeMovie(path_, {.times = steadyTimes(1, lopsided + 1), .end = 1, .displayMatrix = turned.matrix});
    const auto image = grabber()->frameAt(9).value();
    const auto expected = drawn.transformed(turned.transform);
    ASSERT_EQ(image.size(), expected.size());
    for (int field = 0; field < 16; ++field) {
      const QPoint middle((2 * (field % 4) + 1) * image.width() / 8, (2 * (field / 4) + 1) * image.height() / 8);
      EXPECT_EQ(qGreen(image.pixel(middle)) > 128, qGreen(expected.pixel(middle)) > 128) << field;
    }
  }
}

TEST_F(FrameGrabberTest, TellsWhatItCannotRead) {
  EXPECT_EQ(FrameGrabber::open(path_).error().message, "The file is not there");
  folder_.write("movie.mov", "no movie");
  EXPECT_EQ(FrameGrabber::open(path_).error().message, "The file is damaged or no recording");
  writeMovie(path_, {.sound = MadeMovie::Sound{.end = 1}});
  EXPECT_EQ(FrameGrabber::open(path_).error().message, "The recording has no pictures");
}

}  // namespace
}  // namespace Nimbrel
