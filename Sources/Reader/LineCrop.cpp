#include "Reader/LineCrop.h"

#include "Reader/Colour.h"
#include "Reader/Resampler.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace Nimbrel::Reader {

namespace {

constexpr int targetHeight = 36;  ///< in which the models' networks take in a line
constexpr int border = 10;        ///< of white: Tesseract loses letters that touch the edge of its picture
constexpr int leastHeight = 4;    ///< that a line counts as, so that one of dashes has room around it too
/// In heights of a capital letter: what may hang below the baseline, and paper above and beside.
constexpr double descent = 0.22;
constexpr double paperAbove = 0.08;
constexpr double paperAside = 0.2;
constexpr int leastStep = 4;       ///< columns that share one background
constexpr int leastContrast = 24;  ///< for ink to become black: on fainter crops the grain of the paper would too

Box sourceOf(const Line& line, const Box& limit) {
  const double height = std::max(leastHeight, line.height());
  const int bottom = std::max(line.box.bottom, static_cast<int>(std::lround(line.baseline + descent * height)));
  const int above = std::max(1, static_cast<int>(std::lround(paperAbove * height)));
  const int aside = std::max(1, static_cast<int>(std::lround(paperAside * height)));
  const Box wanted{line.box.left - aside, line.box.top - above, line.box.right + aside, bottom + above};
  return wanted.cutTo(limit);
}

/// The most common colour of windows of columns, by counts of coarse colours. Each window is counted anew, in a table
/// that is kept: clearing what was used of it is less than clearing all.
class WindowColour {
 public:
  WindowColour(const QImage& picture, const Box& source) : picture_(picture), source_(source) {}

  /// The most common colour of the columns from `begin` up to `end`.
  QRgb of(int begin, int end) {
    for (const auto place : used_) counts_[place] = 0;
    used_.clear();
    for (int y = source_.top; y < source_.bottom; ++y) {
      const auto* row = pixels(picture_, y);
      for (int x = begin; x < end; ++x) {
        const auto place = placeOf(row[x]);
        if (counts_[place]++ == 0) used_.push_back(place);
      }
    }
    const auto most = *std::ranges::max_element(used_, {}, [&](std::uint16_t place) { return counts_[place]; });
    return meanOf(most, begin, end);
  }

 private:
  static std::uint16_t placeOf(QRgb colour) {
    return static_cast<std::uint16_t>((colour >> 9 & 0x7C00) | (colour >> 6 & 0x03E0) | (colour >> 3 & 0x001F));
  }

  [[nodiscard]] QRgb meanOf(std::uint16_t place, int begin, int end) const {
    std::array<std::int64_t, 3> sums{};
    std::int64_t count = 0;
    for (int y = source_.top; y < source_.bottom; ++y) {
      const auto* row = pixels(picture_, y);
      for (int x = begin; x < end; ++x) {
        if (placeOf(row[x]) != place) continue;
        sums[0] += qRed(row[x]);
        sums[1] += qGreen(row[x]);
        sums[2] += qBlue(row[x]);
        ++count;
      }
    }
    const auto mean = [count](std::int64_t sum) { return static_cast<int>((sum + count / 2) / count); };
    return qRgb(mean(sums[0]), mean(sums[1]), mean(sums[2]));
  }

  const QImage& picture_;
  const Box& source_;
  std::vector<std::uint32_t> counts_ = std::vector<std::uint32_t>(1 << 15);
  std::vector<std::uint16_t> used_;
};

/// How far each pixel is from its background.
Plane contrastOf(const QImage& picture, const Box& source) {
  Plane contrast(source.width(), source.height());
  WindowColour window(picture, source);
  const int step = std::max(leastStep, source.height() / 2);
  const int reach = source.height() / 2;
  for (int begin = source.left; begin < source.right; begin += step) {
    const int end = std::min(begin + step, source.right);
    const auto background = window.of(std::max(source.left, begin - reach), std::min(source.right, end + reach));
    for (int y = source.top; y < source.bottom; ++y) {
      const auto* row = pixels(picture, y);
      auto* target = contrast.row(y - source.top) - source.left;
      for (int x = begin; x < end; ++x) target[x] = static_cast<std::uint8_t>(colourDistance(row[x], background));
    }
  }
  return contrast;
}

/// The contrast that all but a fiftieth of the pixels stay below.
int fullContrast(const Plane& contrast) {
  std::array<std::size_t, 256> counts{};
  for (const auto value : contrast.bytes()) ++counts[value];
  std::size_t above = 0;
  for (int value = 255; value > 0; --value) {
    above += counts[static_cast<std::size_t>(value)];
    if (above * 50 >= contrast.bytes().size()) return value;
  }
  return 1;
}

void invert(Plane& contrast) {
  const int full = std::max(leastContrast, fullContrast(contrast));
  std::array<std::uint8_t, 256> table{};
  for (int value = 0; value < 256; ++value) {
    table[static_cast<std::size_t>(value)] = static_cast<std::uint8_t>(255 - std::min(255, value * 255 / full));
  }
  for (int y = 0; y < contrast.height(); ++y) {
    auto* row = contrast.row(y);
    for (int x = 0; x < contrast.width(); ++x) row[x] = table[row[x]];
  }
}

Plane framed(const Plane& plane, int margin) {
  Plane result(plane.width() + 2 * margin, plane.height() + 2 * margin, 255);
  for (int y = 0; y < plane.height(); ++y) {
    std::copy(plane.row(y), plane.row(y) + plane.width(), result.row(y + margin) + margin);
  }
  return result;
}

}  // namespace

LineCrop cropOf(const QImage& picture, const Line& line, const Box& limit) {
  const auto source = sourceOf(line, limit);
  auto contrast = contrastOf(picture, source);
  invert(contrast);
  const double scale = static_cast<double>(targetHeight) / source.height();
  const int width = std::max(1, static_cast<int>(std::lround(source.width() * scale)));
  return {framed(resampled(contrast, width, targetHeight), border), source.left - border / scale, scale};
}

}  // namespace Nimbrel::Reader
