#include "Reader/EdgeMask.h"

#include "Reader/Colour.h"
#include "Reader/Marks.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

namespace Nimbrel::Reader {

namespace {

constexpr int leastStep = 22;  ///< between neighbours, in the channel of the largest
constexpr int tileSize = 32;
constexpr double leastShare = 0.20;  ///< of a tile, for a colour to be its background
constexpr int backgroundReach = 18;
constexpr int leastRun = 12;  ///< of one colour, for it to be no stroke of a letter

using Bytes = std::vector<std::uint8_t>;

/// Sets a flag for each byte of the one row that is far from that of the other.
void compareBytes(const std::uint8_t* __restrict one, const std::uint8_t* __restrict other,
                  std::uint8_t* __restrict far, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const auto larger = std::max(one[i], other[i]);
    const auto smaller = std::min(one[i], other[i]);
    far[i] = static_cast<std::uint8_t>(larger - smaller) >= leastStep;
  }
}

/// Marks both pixels of each pair that differs, `flags` holding four bytes a pixel.
void markPairs(const std::uint8_t* __restrict flags, std::uint8_t* one, std::uint8_t* other, int count,
               std::uint8_t mark) {
  for (int x = 0; x < count; ++x) {
    std::uint32_t word = 0;
    std::memcpy(&word, flags + static_cast<std::size_t>(x) * 4, sizeof(word));
    const auto bits = static_cast<std::uint8_t>(word != 0 ? mark : 0);
    one[x] |= bits;
    other[x] |= bits;
  }
}

Plane steps(const QImage& picture, const Box& area) {
  Plane mask(area.width(), area.height());
  const auto width = static_cast<std::size_t>(area.width());
  Bytes flags(width * 4);
  for (int y = 0; y < area.height(); ++y) {
    const auto* row = reinterpret_cast<const std::uint8_t*>(pixels(picture, area.top + y) + area.left);
    compareBytes(row, row + 4, flags.data(), (width - 1) * 4);
    markPairs(flags.data(), mask.row(y), mask.row(y) + 1, area.width() - 1, stepAcross);
    if (y + 1 == area.height()) break;
    const auto* next = reinterpret_cast<const std::uint8_t*>(pixels(picture, area.top + y + 1) + area.left);
    compareBytes(row, next, flags.data(), width * 4);
    markPairs(flags.data(), mask.row(y), mask.row(y + 1), area.width(), stepDown);
  }
  return mask;
}

/// Counts colours in a table of few places: rare ones may fall out, a common one does not.
class ColourCounts {
 public:
  void clear() { places_.fill({}); }
  void add(QRgb colour, int count = 1) {
    auto& place = places_[(colour * spread) >> 24];
    place.count += place.colour == colour ? count : -count;
    if (place.count < 0) place = {colour, -place.count};
  }
  [[nodiscard]] QRgb most() const { return std::ranges::max_element(places_, {}, &Place::count)->colour; }

 private:
  struct Place {
    QRgb colour = 0;
    int count = 0;
  };
  /// Knuth's multiplicative hashing, of which the upper bits are the best: 2^32 over the golden ratio.
  static constexpr std::uint32_t spread = 2654435761U;

  std::array<Place, 256> places_{};
};

CommonColour commonColourWith(ColourCounts& counts, const QImage& picture, const Box& area) {
  counts.clear();
  for (int y = area.top; y < area.bottom; ++y) {
    const auto* row = pixels(picture, y);
    for (int x = area.left; x < area.right; ++x) counts.add(row[x]);
  }
  const QRgb colour = counts.most();
  std::int64_t covered = 0;
  for (int y = area.top; y < area.bottom; ++y) {
    const auto* row = pixels(picture, y);
    for (int x = area.left; x < area.right; ++x) covered += row[x] == colour ? 1 : 0;
  }
  return {colour, static_cast<double>(covered) / (static_cast<double>(area.width()) * area.height())};
}

void dropNear(QRgb colour, const QImage& picture, const Box& area, const Box& tile, Plane& mask) {
  for (int y = tile.top; y < tile.bottom; ++y) {
    const auto* row = pixels(picture, y);
    auto* marks = mask.row(y - area.top) - area.left;
    for (int x = tile.left; x < tile.right; ++x) {
      if (marks[x] != 0 && colourDistance(row[x], colour) < backgroundReach) marks[x] = 0;
    }
  }
}

bool isBlank(const Plane& mask, const Box& area, const Box& tile) {
  for (int y = tile.top; y < tile.bottom; ++y) {
    const auto* begin = mask.row(y - area.top) + (tile.left - area.left);
    if (std::any_of(begin, begin + tile.width(), [](std::uint8_t mark) { return mark != 0; })) return false;
  }
  return true;
}

/// Beside the most common colour a tile may hold another background: a stripe of a table, a part of a button. Letters
/// hardly ever have as long runs of one colour.
CommonColour secondBackground(ColourCounts& counts, const QImage& picture, const Box& tile, QRgb first) {
  counts.clear();
  int covered = 0;
  for (int y = tile.top; y < tile.bottom; ++y) {
    const auto* row = pixels(picture, y);
    for (int x = tile.left; x < tile.right;) {
      const int begin = x;
      while (x < tile.right && row[x] == row[begin]) ++x;
      if (x - begin < leastRun || colourDistance(row[begin], first) < backgroundReach) continue;
      counts.add(row[begin], x - begin);
      covered += x - begin;
    }
  }
  return {counts.most(), covered / (static_cast<double>(tile.width()) * tile.height())};
}

/// Whether the pixel stands in a run of the colour as long as no stroke is broad.
bool isOnGround(const QImage& picture, const Box& area, int x, int y, QRgb colour) {
  const auto is = [&](int atX, int atY) { return colourDistance(pixels(picture, atY)[atX], colour) < backgroundReach; };
  int left = x;
  while (left > area.left && x - left < leastRun && is(left - 1, y)) --left;
  int right = x;
  while (right + 1 < area.right && right - left < leastRun && is(right + 1, y)) ++right;
  if (right - left + 1 >= leastRun) return true;
  int top = y;
  while (top > area.top && y - top < leastRun && is(x, top - 1)) --top;
  int bottom = y;
  while (bottom + 1 < area.bottom && bottom - top < leastRun && is(x, bottom + 1)) ++bottom;
  return bottom - top + 1 >= leastRun;
}

/// For a tile of two backgrounds: the one may be the colour of the letters on the other.
void dropGround(QRgb colour, const QImage& picture, const Box& area, const Box& tile, Plane& mask) {
  for (int y = tile.top; y < tile.bottom; ++y) {
    const auto* row = pixels(picture, y);
    auto* marks = mask.row(y - area.top) - area.left;
    for (int x = tile.left; x < tile.right; ++x) {
      if (marks[x] != 0 && colourDistance(row[x], colour) < backgroundReach &&
          isOnGround(picture, area, x, y, colour)) {
        marks[x] = 0;
      }
    }
  }
}

/// Calls `visit` with each tile of the area where the mask is not blank.
template <typename Visit>
void forEachTile(const Plane& mask, const Box& area, const Visit& visit) {
  for (int top = area.top; top < area.bottom; top += tileSize) {
    for (int left = area.left; left < area.right; left += tileSize) {
      const auto tile = Box{left, top, left + tileSize, top + tileSize}.cutTo(area);
      if (!isBlank(mask, area, tile)) visit(tile);
    }
  }
}

void dropBackgrounds(const QImage& picture, const Box& area, Plane& mask) {
  ColourCounts counts;
  forEachTile(mask, area, [&](const Box& tile) {
    const auto common = commonColourWith(counts, picture, tile);
    if (common.share < leastShare) return;
    const bool single =
        common.share > 1 - leastShare || secondBackground(counts, picture, tile, common.colour).share < leastShare;
    (single ? dropNear : dropGround)(common.colour, picture, area, tile, mask);
  });
}

}  // namespace

CommonColour commonColour(const QImage& picture, const Box& area) {
  ColourCounts counts;
  return commonColourWith(counts, picture, area);
}

Plane edgeMask(const QImage& picture, const Box& area, std::optional<QRgb> background) {
  auto mask = steps(picture, area);
  if (background) {
    dropNear(*background, picture, area, area, mask);
  } else {
    dropBackgrounds(picture, area, mask);
  }
  return mask;
}

void dropFurtherBackgrounds(const QImage& picture, Plane& mask) {
  const Box area{0, 0, picture.width(), picture.height()};
  ColourCounts counts;
  forEachTile(mask, area, [&](const Box& tile) {
    const auto first = commonColourWith(counts, picture, tile);
    if (first.share < leastShare || first.share > 1 - leastShare) return;
    const auto second = secondBackground(counts, picture, tile, first.colour);
    if (second.share >= leastShare) dropGround(second.colour, picture, area, tile, mask);
  });
}

}  // namespace Nimbrel::Reader
