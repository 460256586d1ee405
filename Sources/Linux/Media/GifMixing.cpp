#include "Linux/Media/GifMixing.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Nimbrel::Media {

namespace {

/// Errors up to this cannot be seen.
constexpr int visible = 4;
/// Colours farther apart than this would show as dots.
constexpr int farthest = 400;
/// A mixture has to be this much closer to be worth its pattern.
constexpr double gain = 0.7;

struct Direction {
  double red = 0;
  double green = 0;
  double blue = 0;

  static Direction between(QRgb from, QRgb to) {
    return {.red = static_cast<double>(qRed(to) - qRed(from)),
            .green = static_cast<double>(qGreen(to) - qGreen(from)),
            .blue = static_cast<double>(qBlue(to) - qBlue(from))};
  }
  [[nodiscard]] double times(const Direction& other) const {
    return red * other.red + green * other.green + blue * other.blue;
  }
  [[nodiscard]] Direction without(double share, const Direction& other) const {
    return {.red = red - share * other.red, .green = green - share * other.green, .blue = blue - share * other.blue};
  }
};

/// As far beyond the wanted colour as `from` is on this side.
QRgb opposite(QRgb from, QRgb wanted) {
  const auto channel = [](int start, int middle) { return std::clamp(2 * middle - start, 0, 255); };
  return qRgb(channel(qRed(from), qRed(wanted)), channel(qGreen(from), qGreen(wanted)),
              channel(qBlue(from), qBlue(wanted)));
}

void mix(GifColours::Entry& entry, const GifPalette& palette) {
  const QRgb near = palette.colour(entry.near);
  const int error = distance(near, entry.colour);
  if (error < visible) return;
  const auto other = palette.nearest(opposite(near, entry.colour));
  const QRgb far = palette.colour(other);
  if (far == near || distance(near, far) > farthest) return;
  const auto whole = Direction::between(near, far);
  const auto wanted = Direction::between(near, entry.colour);
  const double share = std::clamp(wanted.times(whole) / whole.times(whole), 0.0, 0.5);
  const auto rest = wanted.without(share, whole);
  if (rest.times(rest) > gain * error) return;
  entry.far = other;
  entry.share = static_cast<std::uint8_t>(std::lround(share * 64));
}

}  // namespace

double match(GifColours& colours, const GifPalette& palette) {
  double error = 0;
  double pixels = 0;
  colours.forEach([&](GifColours::Entry& entry) {
    entry.near = palette.nearest(entry.colour);
    entry.share = 0;
    error += static_cast<double>(entry.count) * distance(palette.colour(entry.near), entry.colour);
    pixels += entry.count;
  });
  return pixels > 0 ? error / pixels : 0;
}

void mix(GifColours& colours, const GifPalette& palette) {
  colours.forEach([&](GifColours::Entry& entry) { mix(entry, palette); });
}

std::uint8_t indexAt(int x, int y, const GifColours::Entry& entry) {
  static constexpr std::array<std::array<std::uint8_t, 8>, 8> thresholds{{{0, 32, 8, 40, 2, 34, 10, 42},
                                                                          {48, 16, 56, 24, 50, 18, 58, 26},
                                                                          {12, 44, 4, 36, 14, 46, 6, 38},
                                                                          {60, 28, 52, 20, 62, 30, 54, 22},
                                                                          {3, 35, 11, 43, 1, 33, 9, 41},
                                                                          {51, 19, 59, 27, 49, 17, 57, 25},
                                                                          {15, 47, 7, 39, 13, 45, 5, 37},
                                                                          {63, 31, 55, 23, 61, 29, 53, 21}}};
  const auto threshold = thresholds[static_cast<unsigned>(y) % 8][static_cast<unsigned>(x) % 8];
  return entry.share > threshold ? entry.far : entry.near;
}

}  // namespace Nimbrel::Media
