// Marks on pictures that are longer than what a painter is sure to reach, across and down.

#include "EditingFixture.h"

#include "Editing/GaussianBlur.h"
#include "Editing/MarkPainter.h"

#include <vector>

namespace Nimbrel {
namespace {

using namespace Testing;
using Kind = Annotation::Kind;

constexpr QRgb black = qRgb(0, 0, 0);
constexpr QRgb white = qRgb(255, 255, 255);
/// Where the second tile begins.
constexpr int seam = 16'384;

class LongPictures : public EditingFixture {};

TEST_F(LongPictures, AreMarkedToTheirRightEnd) {
  const auto marked = render(
      plain(40'000, 60), {mark(Kind::redact, {0.9, 0.5}, {0.95, 1}), mark(Kind::highlight, {0.4, 0}, {0.42, 1}, 2),
                          mark(Kind::box, {0.97, -9}, {0.99, 9}, 4), mark(Kind::arrow, {0.1, 0.5}, {0.85, 0.5}, 0)});
  ASSERT_EQ(marked.size(), QSize(40'000, 60));
  EXPECT_EQ(boundsOfOthers(marked.copy(35'000, 0, 3500, 60), white), QRect(998, 28, 2004, 32));
  // Across the edge of a tile nothing changes.
  for (int x = 16'380; x < 16'390; ++x) EXPECT_TRUE(isNear(marked.pixel(x, 50), marked.pixel(16'380, 50))) << x;
  EXPECT_EQ(marked.pixel(38'800, 30), black);
  EXPECT_EQ(marked.pixel(39'600, 30), black);
  EXPECT_EQ(marked.pixel(33'500, 30), qRgb(230, 41, 41));
  EXPECT_EQ(marked.pixel(38'300, 30), white);
}

TEST_F(LongPictures, AreMarkedToTheirLowerEnd) {
  const auto marked = render(
      plain(60, 40'000), {mark(Kind::redact, {0.5, 0.9}, {1, 0.95}), mark(Kind::highlight, {0, 0.4}, {1, 0.42}, 2),
                          mark(Kind::box, {-9, 0.97}, {9, 0.99}, 4), mark(Kind::arrow, {0.5, 0.1}, {0.5, 0.85}, 0)});
  ASSERT_EQ(marked.size(), QSize(60, 40'000));
  EXPECT_EQ(boundsOfOthers(marked.copy(0, 35'000, 60, 3500), white), QRect(28, 998, 32, 2004));
  for (int y = seam - 4; y < seam + 6; ++y) EXPECT_TRUE(isNear(marked.pixel(50, y), qRgb(191, 218, 251))) << y;
  EXPECT_EQ(marked.pixel(30, seam), qRgb(230, 41, 41));
  EXPECT_EQ(marked.pixel(30, 33'500), qRgb(230, 41, 41));
  EXPECT_EQ(marked.pixel(30, 38'300), white);
  EXPECT_EQ(marked.pixel(30, 38'800), black);
  EXPECT_EQ(marked.pixel(30, 39'600), black);
}

/// How far down a mark lies, of a picture 60 x 40,000.
double down(int y) { return y / 40'000.0; }

/// Whether two parts of a picture look alike, but for the rounding of what is drawn farther down.
bool isAlike(const QImage& one, const QImage& other) {
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      if (!isNear(one.pixel(x, y), other.pixel(x, y), 2)) return false;
    }
  }
  return one.size() == other.size();
}

TEST_F(LongPictures, AStepOverTheEdgeOfATileIsWhole) {
  for (const int centre : {seam - 5, seam + 5}) {
    const auto marked = render(plain(60, 40'000), {step({0.5, down(8000)}, 8), step({0.5, down(centre)}, 8)});
    const auto whole = marked.copy(0, 8000 - 20, 60, 40);
    ASSERT_EQ(boundsOfOthers(whole, white), QRect(16, 6, 28, 28));
    EXPECT_TRUE(isAlike(marked.copy(0, centre - 20, 60, 40), whole)) << centre;
  }
}

TEST_F(LongPictures, ALabelOverTheEdgeOfATileIsWhole) {
  const auto marked =
      render(plain(60, 40'000), {label({0, down(8000)}, "HM\nMH", 4), label({0, down(seam - 12)}, "HM\nMH", 4)});
  const auto whole = marked.copy(0, 8000 - 4, 60, 60);
  ASSERT_GT(boundsOfOthers(whole, white).height(), 30);
  EXPECT_TRUE(isAlike(marked.copy(0, seam - 16, 60, 60), whole));
}

TEST(VeryLongPicture, IsMarkedAcrossWhereAPainterDrawsNothing) {
  auto image = plain(9'000'000, 1);
  Flatten::paintMarks(image, std::vector{mark(Kind::redact, {0.95, 0}, {0.98, 1})});
  EXPECT_EQ(boundsOfOthers(image.copy(8'500'000, 0, 500'000, 1), white), QRect(49'998, 0, 270'004, 1));
}

TEST(VeryLongPicture, IsMarkedDownwardWhereAPainterDrawsNothing) {
  auto image = plain(1, 9'000'000);
  Flatten::paintMarks(image, std::vector{mark(Kind::redact, {0, 0.95}, {1, 0.98})});
  EXPECT_EQ(boundsOfOthers(image.copy(0, 8'500'000, 1, 500'000), white), QRect(0, 49'998, 1, 270'004));
}

TEST_F(LongPictures, AreBlurredAndCutToTheirEnd) {
  const auto source = picture(40'000, 60, 3);
  const auto image =
      render(source, {mark(Kind::blur, {0.9, 0.25}, {0.925, 0.75}), mark(Kind::crop, {0.8875, 0}, {0.9375, 1})});
  auto expected = source.copy(35'500, 0, 2000, 60);
  const auto piece = gaussianBlurred(source, QRect(36'000, 15, 1000, 30), 40'000 / 130.0);
  ASSERT_NE(piece, source.copy(36'000, 15, 1000, 30));
  for (int y = 0; y < 30; ++y) {
    for (int x = 0; x < 1000; ++x) expected.setPixel(500 + x, 15 + y, piece.pixel(x, y));
  }
  EXPECT_EQ(image, expected);
}

}  // namespace
}  // namespace Nimbrel
