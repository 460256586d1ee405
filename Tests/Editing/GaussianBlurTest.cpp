#include "Editing/GaussianBlur.h"

#include "EditingFixture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

namespace Nimbrel {
namespace {

using namespace Testing;

/// Letters of a screenshot, as far as a blur is concerned: black and white without any order, and a line in a colour.
QImage harsh(int width, int height) {
  auto image = plain(width, height);
  std::mt19937 random(1);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      if (random() % 3 == 0) image.setPixel(x, y, qRgb(0, 0, 0));
    }
  }
  for (int x = 0; x < width; ++x) image.setPixel(x, height / 3, qRgb(230, 41, 200));
  return image;
}

/// The sum of a Gaussian's bell itself, over more pixels than can matter.
std::vector<double> bell(double deviation) {
  const int reach = static_cast<int>(deviation * 6);
  std::vector<double> weights;
  double sum = 0;
  for (int i = -reach; i <= reach; ++i) {
    weights.push_back(std::exp(-i * i / (2 * deviation * deviation)));
    sum += weights.back();
  }
  for (auto& weight : weights) weight /= sum;
  return weights;
}

double exactGreen(const QImage& image, QPoint place, const std::vector<double>& weights) {
  const int reach = static_cast<int>(weights.size()) / 2;
  double sum = 0;
  for (int dy = -reach; dy <= reach; ++dy) {
    const int y = std::clamp(place.y() + dy, 0, image.height() - 1);
    for (int dx = -reach; dx <= reach; ++dx) {
      const int x = std::clamp(place.x() + dx, 0, image.width() - 1);
      sum += weights[static_cast<std::size_t>(dx + reach)] * weights[static_cast<std::size_t>(dy + reach)] *
             qGreen(image.pixel(x, y));
    }
  }
  return sum;
}

/// What differs most between a sharp step and a blurred one: the bell's own shape.
QImage halves(int width, int height) {
  auto image = plain(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width / 2; ++x) image.setPixel(x, y, qRgb(0, 0, 0));
  }
  return image;
}

TEST(GaussianBlur, IsTheGaussianOfThatDeviationUpToTheEdges) {
  for (const double deviation : {6.0, 7.3, 11.0, 22.15}) {
    const auto weights = bell(deviation);
    for (const auto& image : {harsh(150, 90), halves(150, 90)}) {
      const auto result = gaussianBlurred(image, image.rect(), deviation);
      for (const QPoint place : {QPoint(0, 0), QPoint(149, 89), QPoint(75, 45), QPoint(75, 0), QPoint(69, 30),
                                 QPoint(81, 60), QPoint(60, 89), QPoint(100, 20), QPoint(149, 30)}) {
        EXPECT_NEAR(qGreen(result.pixel(place)), exactGreen(image, place, weights), 3)
            << deviation << " at " << place.x() << ", " << place.y();
      }
    }
  }
}

TEST(GaussianBlur, APartLooksAsItDoesInTheWhole) {
  const auto image = harsh(211, 133);
  const auto whole = gaussianBlurred(image, image.rect(), 6);
  for (const QRect part : {QRect(0, 0, 17, 9), QRect(70, 40, 1, 1), QRect(60, 30, 77, 50), QRect(190, 100, 21, 33),
                           QRect(0, 50, 211, 3)}) {
    EXPECT_EQ(gaussianBlurred(image, part, 6), whole.copy(part)) << part.x();
  }
}

TEST(GaussianBlur, ChangesNothingWhereAllIsOfOneColour) {
  for (const int value : {0, 1, 127, 254, 255}) {
    const auto image = plain(100, 80, QColor(value, 255 - value, value));
    for (const double deviation : {6.0, 40.0, 900.0}) {
      EXPECT_EQ(gaussianBlurred(image, image.rect(), deviation), image) << value << " " << deviation;
    }
  }
}

TEST(GaussianBlur, KeepsColoursWithinTheirAlpha) {
  QImage image(120, 60, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  for (int y = 0; y < 60; ++y) {
    for (int x = 60; x < 120; ++x) image.setPixelColor(x, y, QColor(255, 128, 0, x * 2));
  }
  const auto result = gaussianBlurred(image, image.rect(), 6);
  ASSERT_EQ(result.format(), image.format());
  EXPECT_EQ(result.pixel(0, 0), 0U);
  for (int x = 0; x < 120; ++x) {
    const auto pixel = reinterpret_cast<const QRgb*>(result.constScanLine(30))[x];
    EXPECT_LE(qRed(pixel), qAlpha(pixel)) << x;
    EXPECT_LE(qGreen(pixel), qAlpha(pixel)) << x;
  }
}

TEST(GaussianBlur, WorksOnPicturesSmallerThanItsReach) {
  const auto image = halves(2, 1);
  const auto result = gaussianBlurred(image, image.rect(), 6);
  ASSERT_EQ(result.size(), QSize(2, 1));
  EXPECT_LT(qRed(result.pixel(0, 0)), qRed(result.pixel(1, 0)));
  EXPECT_NEAR(qRed(result.pixel(0, 0)), 119, 4);
}

TEST(GaussianBlur, WorksOnVeryLongPictures) {
  const auto image = plain(3'000'000, 1, QColor(10, 200, 30));
  const auto result = gaussianBlurred(image, QRect(2'900'000, 0, 100'000, 1), 3'000'000 / 130.0);
  ASSERT_EQ(result.size(), QSize(100'000, 1));
  EXPECT_EQ(result.pixel(99'999, 0), qRgb(10, 200, 30));
}

}  // namespace
}  // namespace Nimbrel
