#include "Platform/HeicEncoder.h"

#include "Platform/ImageFile.h"
#include "Support/Pictures.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace Nimbrel {
namespace {

constexpr std::int64_t noLimit = 1 << 30;

class HeicEncoding : public ::testing::Test {
 protected:
  /// The picture as it comes back from the file; null when there is none.
  [[nodiscard]] QImage throughFile(const QImage& picture, double quality = 0.9) const {
    const auto file = HeicEncoder::encode(picture, quality, noLimit);
    if (!file) return {};
    folder_.write("a.heic", *file);
    return ImageFile::picture(folder_.path("a.heic"));
  }

  Testing::TemporaryFolder folder_;
};

/// The largest difference of a channel.
int distance(const QImage& one, const QImage& other) {
  int largest = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      const auto a = one.pixel(x, y);
      const auto b = other.pixel(x, y);
      for (const int channel : {std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))}) {
        largest = std::max(largest, channel);
      }
    }
  }
  return largest;
}

TEST_F(HeicEncoding, KeepsSizeAndColours) {
  const auto picture = Testing::picture(150, 97, 3);
  const auto read = throughFile(picture);
  ASSERT_EQ(read.size(), picture.size());
  EXPECT_LT(distance(picture, read), 60);
}

TEST_F(HeicEncoding, AtFullQualityOnlyRoundingIsLost) {
  const auto picture = Testing::picture(150, 97, 3);
  const auto read = throughFile(picture, 1.0);
  ASSERT_EQ(read.size(), picture.size());
  EXPECT_LE(distance(picture, read), 3);
}

TEST_F(HeicEncoding, HigherQualityTakesMoreRoom) {
  const auto picture = Testing::grainyPicture(160, 120, 1);
  EXPECT_LT(HeicEncoder::encode(picture, 0.6, noLimit)->size(), HeicEncoder::encode(picture, 0.95, noLimit)->size());
}

TEST_F(HeicEncoding, TransparencyStays) {
  QImage picture(64, 64, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 64; ++x) picture.setPixelColor(x, y, Qt::red);
  }
  const auto read = throughFile(picture);
  ASSERT_EQ(read.size(), picture.size());
  EXPECT_GT(qAlpha(read.pixel(32, 8)), 250);
  EXPECT_LT(qAlpha(read.pixel(32, 56)), 5);
}

TEST_F(HeicEncoding, APictureOfOnePixelIsEncoded) {
  QImage picture(1, 1, QImage::Format_RGB32);
  picture.fill(Qt::blue);
  const auto read = throughFile(picture);
  ASSERT_EQ(read.size(), picture.size());
  EXPECT_GT(qBlue(read.pixel(0, 0)), 200);
}

TEST_F(HeicEncoding, AFileThatReachesTheLimitIsNoUse) {
  const auto picture = Testing::grainyPicture(160, 120, 1);
  const auto size = static_cast<std::int64_t>(HeicEncoder::encode(picture, 0.9, noLimit)->size());
  EXPECT_FALSE(HeicEncoder::encode(picture, 0.9, size));
  EXPECT_TRUE(HeicEncoder::encode(picture, 0.9, size + 1));
}

TEST_F(HeicEncoding, APictureFarAboveItsLimitIsGivenUp) {
  const auto picture = Testing::grainyPicture(64, 1024, 1);
  EXPECT_FALSE(HeicEncoder::encode(picture, 0.9, 500));
}

TEST_F(HeicEncoding, NoPictureIsNoFile) { EXPECT_FALSE(HeicEncoder::encode(QImage(), 0.9, noLimit)); }

}  // namespace
}  // namespace Nimbrel
