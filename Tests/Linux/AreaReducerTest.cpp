#include "Linux/Images/AreaReducer.h"

#include "Support/Pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <random>
#include <vector>

namespace Nimbrel::Images {
namespace {

using ImageFile::PixelSize;

using Channels = std::array<double, 4>;  // red, green, blue, alpha

std::vector<std::uint8_t> randomBytes(std::size_t count, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<std::uint8_t> bytes(count);
  std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<std::uint8_t>(random()); });
  return bytes;
}

/// How much of the pixel `index` of `source` lies in the pixel `place` of `target`.
double overlap(int index, int source, int place, int target) {
  const double scale = static_cast<double>(source) / target;
  return std::max(0.0, std::min(index + 1.0, (place + 1) * scale) - std::max<double>(index, place * scale));
}

Channels premultiplied(const std::uint8_t* pixel, PixelLayout layout) {
  const auto at = [&](int i) { return static_cast<double>(pixel[i]); };
  switch (layout) {
    case PixelLayout::Grey:
      return {at(0), at(0), at(0), 255};
    case PixelLayout::GreyAlpha:
      return {at(0) * at(1) / 255, at(0) * at(1) / 255, at(0) * at(1) / 255, at(1)};
    case PixelLayout::Rgb:
      return {at(0), at(1), at(2), 255};
    case PixelLayout::Rgba:
      return {at(0) * at(3) / 255, at(1) * at(3) / 255, at(2) * at(3) / 255, at(3)};
    case PixelLayout::Rgb32:
      return {at(2), at(1), at(0), 255};
    case PixelLayout::Argb32:
      return {at(2), at(1), at(0), at(3)};
  }
  return {};
}

/// The definition, in plain sums.
Channels averageAt(const std::vector<std::uint8_t>& bytes, PixelSize source, PixelLayout layout, PixelSize target,
                   int x, int y) {
  Channels sums{};
  double area = 0;
  for (int row = 0; row < source.height; ++row) {
    const double high = overlap(row, source.height, y, target.height);
    for (int column = 0; high > 0 && column < source.width; ++column) {
      const double part = high * overlap(column, source.width, x, target.width);
      const auto offset = static_cast<std::size_t>((row * source.width + column) * channelCount(layout));
      const auto pixel = premultiplied(&bytes[offset], layout);
      for (std::size_t c = 0; c < 4; ++c) sums[c] += part * pixel[c];
      area += part;
    }
  }
  for (auto& sum : sums) sum /= area;
  return sums;
}

QImage reduce(const std::vector<std::uint8_t>& bytes, PixelSize source, PixelLayout layout, PixelSize target) {
  AreaReducer reducer(source, layout, target);
  for (int y = 0; y < source.height; ++y) {
    reducer.addRow(&bytes[static_cast<std::size_t>(y * source.width * channelCount(layout))]);
  }
  return reducer.takeImage();
}

struct Case {
  PixelLayout layout;
  PixelSize source;
  PixelSize target;
};

class Reducing : public ::testing::TestWithParam<Case> {};

TEST_P(Reducing, AveragesTheAreaUnderEachPixel) {
  const auto& [layout, source, target] = GetParam();
  auto bytes = randomBytes(static_cast<std::size_t>(source.width * source.height * channelCount(layout)), 7);
  if (layout == PixelLayout::Argb32) {
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
      for (std::size_t c = 0; c < 3; ++c) bytes[i + c] = std::min(bytes[i + c], bytes[i + 3]);
    }
  }
  const auto image = reduce(bytes, source, layout, target);
  ASSERT_EQ(image.size(), QSize(target.width, target.height));
  double worst = 0;
  for (int y = 0; y < target.height; ++y) {
    for (int x = 0; x < target.width; ++x) {
      const QRgb pixel = reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
      const auto expected = averageAt(bytes, source, layout, target, x, y);
      const std::array actual{qRed(pixel), qGreen(pixel), qBlue(pixel), qAlpha(pixel)};
      for (std::size_t c = 0; c < 4; ++c) worst = std::max(worst, std::abs(actual[c] - expected[c]));
    }
  }
  EXPECT_LT(worst, 2);
}

INSTANTIATE_TEST_SUITE_P(
    LayoutsAndSizes, Reducing,
    ::testing::Values(Case{PixelLayout::Grey, {100, 70}, {64, 45}}, Case{PixelLayout::GreyAlpha, {100, 70}, {31, 22}},
                      Case{PixelLayout::Rgb, {144, 90}, {64, 40}}, Case{PixelLayout::Rgb, {129, 33}, {64, 16}},
                      Case{PixelLayout::Rgba, {90, 144}, {40, 64}}, Case{PixelLayout::Rgba, {64, 64}, {64, 64}},
                      Case{PixelLayout::Rgb32, {300, 20}, {10, 1}}, Case{PixelLayout::Argb32, {65, 65}, {64, 64}},
                      Case{PixelLayout::Argb32, {7, 5}, {1, 1}}));

TEST(AreaReducer, KeepsEvenColoursToTheBit) {
  for (const PixelSize source :
       {PixelSize{1440, 900}, PixelSize{1366, 768}, PixelSize{20000, 3}, PixelSize{641, 640}}) {
    const std::vector<std::uint8_t> bytes(static_cast<std::size_t>(source.width * source.height * 3), 201);
    const auto target = fittedSize(source, 640);
    const auto image = reduce(bytes, source, PixelLayout::Rgb, target);
    QImage expected(target.width, target.height, QImage::Format_RGB32);
    expected.fill(qRgb(201, 201, 201));
    EXPECT_EQ(image, expected) << source.width;
  }
}

TEST(AreaReducer, LeavesAPictureOfTheRightSizeAsItIs) {
  const auto image = Testing::picture(37, 21);
  EXPECT_EQ(reduced(image, {.width = 37, .height = 21}), image);
}

TEST(AreaReducer, CallsAPictureTransparentOnlyWhenSomeOfItIs) {
  std::vector<std::uint8_t> bytes(4 * 6 * 6, 255);
  EXPECT_EQ(reduce(bytes, {6, 6}, PixelLayout::Rgba, {3, 3}).format(), QImage::Format_RGB32);
  bytes[4 * 20 + 3] = 254;
  EXPECT_EQ(reduce(bytes, {6, 6}, PixelLayout::Rgba, {3, 3}).format(), QImage::Format_ARGB32_Premultiplied);
}

TEST(AreaReducer, HasNoPictureBeforeTheLastRow) {
  const std::vector<std::uint8_t> row(10, 9);
  AreaReducer reducer({10, 4}, PixelLayout::Grey, {5, 2});
  for (int y = 0; y < 3; ++y) reducer.addRow(row.data());
  EXPECT_TRUE(reducer.takeImage().isNull());
  reducer.addRow(row.data());
  reducer.addRow(row.data());
  EXPECT_EQ(reducer.takeImage().size(), QSize(5, 2));
}

TEST(AxisWeights, SumToTheSameForEveryPixel) {
  for (const auto& [source, target] :
       {std::pair{1440, 640}, {900, 400}, {641, 640}, {640, 640}, {30000, 640}, {300000, 640}, {7, 1}}) {
    const AxisWeights axis(source, target);
    ASSERT_EQ(axis.pixels.size(), static_cast<std::size_t>(target));
    for (const auto& pixel : axis.pixels) {
      const auto first = axis.weights.begin() + static_cast<std::ptrdiff_t>(pixel.weights);
      ASSERT_EQ(std::accumulate(first, first + pixel.count, 0), 256) << source << " to " << target;
      ASSERT_LE(pixel.first + pixel.count, source);
    }
  }
}

TEST(FittedSize, KeepsProportionsAndNeverEnlarges) {
  EXPECT_EQ(fittedSize({1440, 900}, 640), (PixelSize{640, 400}));
  EXPECT_EQ(fittedSize({900, 1440}, 640), (PixelSize{400, 640}));
  EXPECT_EQ(fittedSize({1366, 768}, 640), (PixelSize{640, 360}));
  EXPECT_EQ(fittedSize({640, 640}, 640), (PixelSize{640, 640}));
  EXPECT_EQ(fittedSize({640, 400}, 1600), (PixelSize{640, 400}));
  EXPECT_EQ(fittedSize({20000, 200}, 640), (PixelSize{640, 6}));
  EXPECT_EQ(fittedSize({20000, 3}, 64), (PixelSize{64, 1}));
  EXPECT_EQ(fittedSize({1, 1}, 64), (PixelSize{1, 1}));
}

}  // namespace
}  // namespace Nimbrel::Images
