#include "Linux/Media/GifPalette.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Nimbrel::Media {

GifPalette::GifPalette(std::vector<QRgb> colours) : colours_(std::move(colours)), firstWith_() {
  std::ranges::sort(colours_, {}, [](QRgb colour) { return qGreen(colour); });
  std::size_t index = 0;
  for (int green = 0; green < 256; ++green) {
    while (index + 1 < colours_.size() && qGreen(colours_[index]) < green) ++index;
    firstWith_[static_cast<std::size_t>(green)] = static_cast<std::uint8_t>(index);
  }
}

std::uint8_t GifPalette::nearest(QRgb wanted) const {
  // Outwards from the same green, up to where green alone is farther away than the best so far.
  int best = std::numeric_limits<int>::max();
  int found = 0;
  const auto look = [&](int index) {
    const QRgb candidate = colours_[static_cast<std::size_t>(index)];
    const int green = qGreen(candidate) - qGreen(wanted);
    if (green * green >= best) return false;
    if (const int far = distance(candidate, wanted); far < best) {
      best = far;
      found = index;
    }
    return true;
  };
  int above = firstWith_[static_cast<std::size_t>(qGreen(wanted))];
  int below = above - 1;
  const int count = static_cast<int>(colours_.size());
  while (above < count || below >= 0) {
    if (above < count) above = look(above) ? above + 1 : count;
    if (below >= 0) below = look(below) ? below - 1 : -1;
  }
  return static_cast<std::uint8_t>(found);
}

}  // namespace Nimbrel::Media
