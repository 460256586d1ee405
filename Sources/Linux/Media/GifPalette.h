#pragma once

#include <QRgb>

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace Nimbrel::Media {

/// The squared distance of two colours, each channel counting the same; at most 195,075.
[[nodiscard]] inline int distance(QRgb one, QRgb other) {
  const int red = qRed(one) - qRed(other);
  const int green = qGreen(one) - qGreen(other);
  const int blue = qBlue(one) - qBlue(other);
  return red * red + green * green + blue * blue;
}

/// The colours that a picture of a GIF may use, and behind them an index for what it leaves as it is.
class GifPalette {
 public:
  static constexpr std::size_t mostColours = 255;

  GifPalette() = default;
  /// At most `mostColours`, and at least one.
  explicit GifPalette(std::vector<QRgb> colours);

  [[nodiscard]] std::span<const QRgb> colours() const { return colours_; }
  [[nodiscard]] QRgb colour(std::uint8_t index) const { return colours_[index]; }
  /// The index of no colour.
  [[nodiscard]] std::uint8_t transparent() const { return static_cast<std::uint8_t>(colours_.size()); }

  /// The index of the colour that is nearest.
  [[nodiscard]] std::uint8_t nearest(QRgb wanted) const;

 private:
  std::vector<QRgb> colours_;                ///< by their green
  std::array<std::uint8_t, 256> firstWith_;  ///< by green: the first colour that has as much, or the last one
};

}  // namespace Nimbrel::Media
