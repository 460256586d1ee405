#include "Editing/Blur.h"

#include "EditingFixture.h"

#include "Editing/GaussianBlur.h"

#include <limits>
#include <vector>

namespace Nimbrel::Flatten {
namespace {

using namespace Testing;
using Kind = Annotation::Kind;

/// No two neighbours are alike, so that every pixel shows whether it was blurred.
QImage chequered(int width, int height) {
  auto image = plain(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = y % 2; x < width; x += 2) image.setPixel(x, y, qRgb(0, 0, 0));
  }
  return image;
}

bool isBlurred(const QImage& image, int x, int y) { return isNear(image.pixel(x, y), qRgb(128, 128, 128), 8); }

Annotation blur(QPointF start, QPointF end) { return mark(Kind::blur, start, end); }

TEST(Blur, WithoutMarksThereIsNothing) { EXPECT_TRUE(blurred(chequered(100, 100), {}).isNull()); }

TEST(Blur, HasSharpEdges) {
  const auto source = chequered(200, 100);
  const auto result = blurred(source, std::vector{blur({0.25, 0.2}, {0.75, 0.8})});
  for (int y = 0; y < 100; ++y) {
    for (int x = 0; x < 200; ++x) {
      const bool isInside = QRect(50, 20, 100, 60).contains(x, y);
      ASSERT_EQ(isBlurred(result, x, y), isInside) << x << ", " << y;
      ASSERT_TRUE(isInside || result.pixel(x, y) == source.pixel(x, y)) << x << ", " << y;
    }
  }
}

TEST(Blur, LeavesTheSourceAlone) {
  const auto source = chequered(200, 100);
  EXPECT_NE(blurred(source, std::vector{blur({0, 0}, {1, 1})}), source);
  EXPECT_EQ(source, chequered(200, 100));
}

TEST(Blur, APixelThatIsCoveredInPartIsBlurredAsAWhole) {
  const auto result = blurred(chequered(100, 100), std::vector{blur({0.2049, 0.2001}, {0.4001, 0.4099})});
  EXPECT_TRUE(isBlurred(result, 20, 20));
  EXPECT_TRUE(isBlurred(result, 40, 40));
  EXPECT_FALSE(isBlurred(result, 19, 30));
  EXPECT_FALSE(isBlurred(result, 41, 30));
  EXPECT_FALSE(isBlurred(result, 30, 41));
}

TEST(Blur, IsTakenFromTheUntouchedSourceWhereMarksOverlap) {
  const auto source = picture(300, 200, 3);
  const auto all = gaussianBlurred(source, source.rect(), 6);
  const std::vector marks{blur({0.1, 0.1}, {0.6, 0.6}), blur({0.4, 0.4}, {0.9, 0.9}), blur({0.1, 0.1}, {0.6, 0.6})};
  auto expected = source;
  for (const QRect place : {QRect(30, 20, 150, 100), QRect(120, 80, 150, 100)}) {
    for (int y = place.top(); y <= place.bottom(); ++y) {
      for (int x = place.left(); x <= place.right(); ++x) expected.setPixel(x, y, all.pixel(x, y));
    }
  }
  EXPECT_EQ(blurred(source, marks), expected);
}

TEST(Blur, FarPlacesLookAsNearOnesDo) {
  const auto source = picture(900, 700, 3);
  const auto deviation = 900 / 130.0;
  const auto all = gaussianBlurred(source, source.rect(), deviation);
  const auto result = blurred(source, std::vector{blur({0, 0}, {0.02, 0.02}), blur({0.95, 0.9}, {1, 1})});
  EXPECT_EQ(result.copy(0, 0, 18, 14), all.copy(0, 0, 18, 14));
  EXPECT_EQ(result.copy(855, 630, 45, 70), all.copy(855, 630, 45, 70));
  EXPECT_EQ(result.copy(100, 100, 500, 500), source.copy(100, 100, 500, 500));
}

TEST(Blur, ManyMarksOverEachOtherTakeNoLongerThanOne) {
  // One by one these would blur two thousand million pixels.
  const auto source = chequered(1200, 900);
  std::vector<Annotation> marks;
  for (int i = 0; i < 2000; ++i) marks.push_back(blur({i * 1e-5, 0}, {1, 1 - i * 1e-5}));
  EXPECT_EQ(blurred(source, marks), blurred(source, std::vector{blur({0, 0}, {1, 1})}));
}

TEST(Blur, WhatLiesOutsideIsCutOff) {
  const auto source = chequered(100, 100);
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const auto half = blurred(source, std::vector{blur({-infinity, 0.5}, {infinity, 7})});
  EXPECT_TRUE(isBlurred(half, 40, 50));
  EXPECT_TRUE(isBlurred(half, 60, 80));
  EXPECT_FALSE(isBlurred(half, 50, 49));
  EXPECT_EQ(blurred(source, std::vector{blur({-1, -1}, {-0.1, -0.1}), blur({2, 2}, {3, 3})}), source);
}

TEST(Blur, WhatIsNoNumberIsLeftOut) {
  const auto source = chequered(100, 100);
  const double noNumber = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(blurred(source, std::vector{blur({noNumber, 0}, {1, 1}), blur({0, 0}, {1, noNumber})}), source);
}

TEST(Blur, TransparencyIsBlurredToo) {
  QImage source(100, 100, QImage::Format_ARGB32_Premultiplied);
  source.fill(Qt::transparent);
  for (int y = 0; y < 100; ++y) {
    for (int x = 0; x < 50; ++x) source.setPixel(x, y, qRgb(200, 0, 0));
  }
  const auto result = blurred(source, std::vector{blur({0, 0}, {1, 1})});
  EXPECT_NEAR(result.pixelColor(50, 50).alpha(), 127, 12);
  EXPECT_NEAR(result.pixelColor(50, 50).red(), 200, 3);
}

}  // namespace
}  // namespace Nimbrel::Flatten
