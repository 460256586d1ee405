#include "Linux/Media/FrameConverter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace Nimbrel {
namespace {

using namespace Media;

struct Stored {
  int brightness;
  int blueness;
  int redness;
};

/// A plain picture as a decoder gives it.
Frame plainPicture(QSize size, const Stored& colour) {
  Frame frame(av_frame_alloc());
  frame->format = AV_PIX_FMT_YUV420P;
  frame->width = size.width();
  frame->height = size.height();
  EXPECT_EQ(av_frame_get_buffer(frame.get(), 0), 0);
  const auto fill = [&](int plane, int rows, int value) {
    std::fill_n(frame->data[plane], frame->linesize[plane] * rows, static_cast<std::uint8_t>(value));
  };
  fill(0, size.height(), colour.brightness);
  fill(1, (size.height() + 1) / 2, colour.blueness);
  fill(2, (size.height() + 1) / 2, colour.redness);
  return frame;
}

/// The colour in the middle of the image that is made of it.
QRgb converted(const AVFrame& picture) {
  const QSize size(picture.width, picture.height);
  const auto image = FrameConverter(size, nullptr).image(picture);
  if (!image) {
    ADD_FAILURE() << image.error().message;
    return 0;
  }
  EXPECT_EQ(image.value().size(), size);
  EXPECT_EQ(image.value().format(), QImage::Format_RGB32);
  return image.value().pixel(size.width() / 2, size.height() / 2);
}

void expectNear(QRgb colour, QRgb wanted) {
  EXPECT_LE(std::abs(qRed(colour) - qRed(wanted)), 2);
  EXPECT_LE(std::abs(qGreen(colour) - qGreen(wanted)), 2);
  EXPECT_LE(std::abs(qBlue(colour) - qBlue(wanted)), 2);
  EXPECT_EQ(qAlpha(colour), 255);
}

constexpr QRgb green = 0xFF00FF00;
constexpr Stored greenOf601{.brightness = 145, .blueness = 54, .redness = 34};
constexpr Stored greenOf709{.brightness = 173, .blueness = 42, .redness = 26};
constexpr QSize small(64, 48);
constexpr QSize large(1280, 720);

TEST(FrameConverter, UnderstandsColoursAsThePictureSays) {
  const auto one = plainPicture(small, greenOf709);
  one->colorspace = AVCOL_SPC_BT709;
  expectNear(converted(*one), green);
  const auto other = plainPicture(large, greenOf601);
  other->colorspace = AVCOL_SPC_SMPTE170M;
  expectNear(converted(*other), green);
}

TEST(FrameConverter, TakesColoursForWhatIsUsualAtTheirSize) {
  expectNear(converted(*plainPicture(small, greenOf601)), green);
  expectNear(converted(*plainPicture(large, greenOf709)), green);
}

TEST(FrameConverter, UnderstandsTheRangeAsThePictureSays) {
  const auto full = plainPicture(small, {.brightness = 250, .blueness = 128, .redness = 128});
  full->color_range = AVCOL_RANGE_JPEG;
  expectNear(converted(*full), qRgb(250, 250, 250));
  const auto limited = plainPicture(small, {.brightness = 235, .blueness = 128, .redness = 128});
  limited->color_range = AVCOL_RANGE_MPEG;
  expectNear(converted(*limited), qRgb(255, 255, 255));
}

TEST(FrameConverter, TakesPicturesThatAreStoredAsRedGreenAndBlue) {
  const Frame frame(av_frame_alloc());
  frame->format = AV_PIX_FMT_GBRP;
  frame->width = small.width();
  frame->height = small.height();
  ASSERT_EQ(av_frame_get_buffer(frame.get(), 0), 0);
  for (int plane = 0; plane < 3; ++plane) {
    std::fill_n(frame->data[plane], frame->linesize[plane] * small.height(),
                static_cast<std::uint8_t>(50 * plane + 20));
  }
  expectNear(converted(*frame), qRgb(120, 20, 70));
}

TEST(FrameConverter, GivesAllPicturesTheSizeOfTheTrack) {
  FrameConverter converter(small, nullptr);
  for (const QSize size : {small, QSize(32, 24), QSize(99, 61)}) {
    const auto image = converter.image(*plainPicture(size, greenOf601));
    ASSERT_TRUE(image);
    EXPECT_EQ(image.value().size(), small);
    expectNear(image.value().pixel(20, 20), green);
  }
}

TEST(FrameConverter, KeepsOddSizes) { expectNear(converted(*plainPicture({63, 47}, greenOf601)), green); }

}  // namespace
}  // namespace Nimbrel
