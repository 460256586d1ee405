#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"

#include "Support/Pictures.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Nimbrel {
namespace {

std::string pathOf(std::size_t number) { return "/shots/" + std::to_string(number) + ".png"; }

QImage ofSize(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(Qt::white);
  return image;
}

void storeThumb(ThumbCache& cache, const std::string& path, int width = 8) {
  cache.store(CompactImage(ofSize(width, 8)), path);
}

/// A cache with as many thumbnails as it takes, numbered from 0.
ThumbCache fullCache() {
  ThumbCache cache;
  for (std::size_t i = 0; i < ThumbCache::limit; ++i) storeThumb(cache, pathOf(i));
  return cache;
}

TEST(ThumbCache, FourHundredAndOneShotsPushOutExactlyTheFirst) {
  auto cache = fullCache();
  ASSERT_EQ(cache.size(), 400U);
  storeThumb(cache, pathOf(400));
  EXPECT_EQ(cache.size(), 400U);
  EXPECT_FALSE(cache.holds(pathOf(0)));
  for (std::size_t i = 1; i <= 400; ++i) EXPECT_TRUE(cache.holds(pathOf(i))) << i;
}

TEST(ThumbCache, StoringTheFirstAgainMakesItNoYounger) {
  auto cache = fullCache();
  storeThumb(cache, pathOf(0));
  storeThumb(cache, pathOf(400));
  EXPECT_FALSE(cache.holds(pathOf(0)));
  EXPECT_TRUE(cache.holds(pathOf(1)));
}

TEST(ThumbCache, StoringTheFirstAgainAfterItWasPushedOutMakesItTheYoungest) {
  auto cache = fullCache();
  storeThumb(cache, pathOf(400));
  storeThumb(cache, pathOf(0));
  EXPECT_FALSE(cache.holds(pathOf(1)));
  for (std::size_t i = 500; i < 899; ++i) storeThumb(cache, pathOf(i));
  EXPECT_TRUE(cache.holds(pathOf(0)));
  storeThumb(cache, pathOf(899));
  EXPECT_FALSE(cache.holds(pathOf(0)));
}

TEST(ThumbCache, ARemovedThumbnailLeavesItsPlace) {
  auto cache = fullCache();
  cache.remove(pathOf(7));
  cache.remove("/shots/unknown.png");
  EXPECT_FALSE(cache.holds(pathOf(7)));
  EXPECT_EQ(cache.size(), 399U);
  storeThumb(cache, pathOf(400));
  EXPECT_TRUE(cache.holds(pathOf(0))) << "there was room";
}

TEST(ThumbCache, ReadingMakesNothingYounger) {
  auto cache = fullCache();
  EXPECT_FALSE(cache.image(pathOf(0)).isNull());
  storeThumb(cache, pathOf(400));
  EXPECT_TRUE(cache.image(pathOf(0)).isNull());
}

TEST(ThumbCache, ANewThumbnailTakesThePlaceOfTheOld) {
  ThumbCache cache;
  storeThumb(cache, pathOf(1), 8);
  storeThumb(cache, pathOf(1), 12);
  EXPECT_EQ(cache.size(), 1U);
  EXPECT_EQ(cache.image(pathOf(1)).width(), 12);
}

TEST(CompactImage, LooksLikeThePictureAndTakesATenthOfItsMemory) {
  const auto picture = Testing::picture(640, 400, 3).convertToFormat(QImage::Format_RGB32);
  const CompactImage compact(picture);
  EXPECT_LT(compact.byteCount(), picture.sizeInBytes() / 10);
  const auto shown = compact.image().convertToFormat(QImage::Format_RGB32);
  ASSERT_EQ(shown.size(), picture.size());
  double difference = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      difference += std::abs(qGray(shown.pixel(x, y)) - qGray(picture.pixel(x, y)));
    }
  }
  EXPECT_LT(difference / (640.0 * 400.0), 2.0);
}

TEST(CompactImage, WhatIsTransparentStaysSo) {
  QImage picture(20, 10, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  picture.setPixelColor(3, 4, Qt::red);
  const auto shown = CompactImage(picture).image();
  EXPECT_EQ(shown.pixelColor(0, 0).alpha(), 0);
  EXPECT_EQ(shown.pixelColor(3, 4), QColor(Qt::red));
}

TEST(CompactImage, OfNothingIsNothing) {
  EXPECT_TRUE(CompactImage(QImage()).isNull());
  EXPECT_TRUE(CompactImage().image().isNull());
}

TEST(GalleryPreviewCache, ASeventeenthPicturePushesOutTheOneUsedLongestAgo) {
  GalleryPreviewCache cache;
  for (std::size_t i = 0; i < 16; ++i) cache.store(ofSize(8, 8), pathOf(i));
  EXPECT_FALSE(cache.image(pathOf(0)).isNull());
  cache.store(ofSize(8, 8), pathOf(16));
  EXPECT_TRUE(cache.holds(pathOf(0)));
  EXPECT_FALSE(cache.holds(pathOf(1)));
  EXPECT_TRUE(cache.holds(pathOf(2)));
}

TEST(GalleryPreviewCache, PicturesTogetherTakeNoMoreThanTheirLimit) {
  GalleryPreviewCache cache;
  // 32 MiB each.
  for (std::size_t i = 0; i < 3; ++i) cache.store(ofSize(4096, 2048), pathOf(i));
  EXPECT_EQ(cache.totalCost(), GalleryPreviewCache::costLimit);
  EXPECT_TRUE(cache.holds(pathOf(0)));
  cache.store(ofSize(1, 1), pathOf(3));
  EXPECT_FALSE(cache.holds(pathOf(0)));
  EXPECT_TRUE(cache.holds(pathOf(1)));
  EXPECT_TRUE(cache.holds(pathOf(3)));
}

TEST(GalleryPreviewCache, APictureLargerThanTheLimitIsNotKeptAndPushesOutNoOther) {
  GalleryPreviewCache cache;
  cache.store(ofSize(8, 8), pathOf(0));
  cache.store(ofSize(4096, 6145), pathOf(1));
  EXPECT_TRUE(cache.image(pathOf(1)).isNull());
  EXPECT_TRUE(cache.holds(pathOf(0)));
}

TEST(GalleryPreviewCache, ANewPictureTakesThePlaceOfTheOld) {
  GalleryPreviewCache cache;
  cache.store(ofSize(8, 8), pathOf(0));
  cache.store(ofSize(9, 8), pathOf(0));
  EXPECT_EQ(cache.image(pathOf(0)).width(), 9);
  EXPECT_EQ(cache.totalCost(), 9 * 8 * 4);
}

TEST(GalleryPreviewCache, ForgetsThePictureOfAPath) {
  GalleryPreviewCache cache;
  cache.store(ofSize(8, 8), pathOf(0));
  cache.store(ofSize(8, 8), pathOf(1));
  cache.remove(pathOf(0));
  cache.remove(pathOf(2));
  EXPECT_FALSE(cache.holds(pathOf(0)));
  EXPECT_TRUE(cache.holds(pathOf(1)));
}

TEST(GalleryPreviewCache, EvenNothingCountsForOneByte) { EXPECT_EQ(GalleryPreviewCache::cost(QImage()), 1); }

}  // namespace
}  // namespace Nimbrel
