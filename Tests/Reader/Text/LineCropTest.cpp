#include "Reader/LineCrop.h"
#include "Reader/Resampler.h"

#include <gmock/gmock.h>

#include <QPainter>

#include <algorithm>

namespace Nimbrel::Reader {
namespace {

constexpr Box page{0, 0, 200, 40};
const Line line{.box = {20, 10, 150, 24}, .ascender = 10, .baseline = 24, .parts = {{20, 10, 150, 24}}};

QImage strokes(QRgb paper, const std::vector<QRgb>& inks) {
  QImage picture(page.width(), page.height(), QImage::Format_RGB32);
  picture.fill(paper);
  QPainter painter(&picture);
  for (int i = 0; i < 13; ++i) painter.fillRect(20 + 10 * i, 10, 3, 14, QColor(inks[i % inks.size()]));
  return picture;
}

std::uint8_t darkest(const Plane& plane) { return *std::ranges::min_element(plane.bytes()); }

TEST(LineCrop, IsDarkOnWhiteWhateverTheColours) {
  for (const auto& picture :
       {strokes(qRgb(255, 255, 255), {qRgb(0, 0, 0)}), strokes(qRgb(20, 20, 24), {qRgb(230, 230, 230)}),
        strokes(qRgb(90, 90, 90), {qRgb(170, 60, 40)})}) {
    const auto crop = cropOf(picture, line, page);
    EXPECT_EQ(crop.grey.row(0)[0], 255);
    EXPECT_LT(darkest(crop.grey), 40);
    EXPECT_GT(std::ranges::count(crop.grey.bytes(), 255), static_cast<std::ptrdiff_t>(crop.grey.bytes().size() / 4));
  }
}

TEST(LineCrop, IsOfOneHeightAndTellsWhereItIsFrom) {
  const auto crop = cropOf(strokes(qRgb(255, 255, 255), {qRgb(0, 0, 0)}), line, page);
  EXPECT_EQ(crop.grey.height(), 56);
  const auto* middle = crop.grey.row(28);
  const auto first = std::find_if(middle, middle + crop.grey.width(), [](std::uint8_t value) { return value < 128; });
  EXPECT_NEAR(crop.inPicture(static_cast<double>(first - middle)), 20, 1);
}

TEST(LineCrop, StaysWithinItsLimit) {
  const auto inner = cropOf(strokes(qRgb(255, 255, 255), {qRgb(0, 0, 0)}), line, {18, 9, 152, 26});
  const auto outer = cropOf(strokes(qRgb(255, 255, 255), {qRgb(0, 0, 0)}), line, page);
  EXPECT_GT(inner.scale, outer.scale);
}

TEST(Resampler, KeepsAFlatPlaneFlat) {
  const Plane plane(17, 9, 143);
  for (const auto& [width, height] : {std::pair(40, 36), std::pair(5, 3), std::pair(1, 1), std::pair(17, 9)}) {
    const auto result = resampled(plane, width, height);
    EXPECT_EQ(result.width(), width);
    EXPECT_TRUE(std::ranges::all_of(result.bytes(), [](std::uint8_t value) { return value == 143; }));
  }
}

}  // namespace
}  // namespace Nimbrel::Reader
