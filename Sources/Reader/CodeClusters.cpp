#include "Reader/CodeClusters.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>

namespace Nimbrel::Reader {

namespace {

/// Half as wide as the narrowest quiet zone that is still found.
constexpr int cellSide = 4;
/// Least difference between the lightest and the darkest pixel of a cell where something is drawn.
constexpr int leastContrast = 60;
/// The smallest code has ten modules a side, and none is read below two pixels a module.
constexpr int leastSide = 18;
constexpr double mostElongated = 4.2;
/// Of the rarer of the two shades: either covers about half of a code, and the ink of most text less.
constexpr double leastShare = .25;
/// Changes between dark and light along a line through a code of ten modules.
constexpr double leastChanges = 3.5;

struct Grid {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> cells;

  [[nodiscard]] std::uint8_t& at(int x, int y) { return cells[static_cast<std::size_t>(y) * width + x]; }
};

/// The cells where something is drawn. Each reaches one pixel into its neighbours, or it would not see an edge that
/// lies between them.
Grid drawnCells(const QImage& grey) {
  Grid grid{std::max(grey.width() - 1, 0) / cellSide, std::max(grey.height() - 1, 0) / cellSide, {}};
  grid.cells.resize(static_cast<std::size_t>(grid.width) * static_cast<std::size_t>(grid.height));
  std::vector<std::uint8_t> lowest(static_cast<std::size_t>(grid.width) * cellSide + 1);
  std::vector<std::uint8_t> highest(lowest.size());
  for (int y = 0; y < grid.height; ++y) {
    const auto* first = grey.constScanLine(y * cellSide);
    std::copy_n(first, lowest.size(), lowest.begin());
    std::copy_n(first, highest.size(), highest.begin());
    for (int line = 1; line <= cellSide; ++line) {
      const auto* row = grey.constScanLine(y * cellSide + line);
      for (std::size_t x = 0; x < lowest.size(); ++x) {
        lowest[x] = std::min(lowest[x], row[x]);
        highest[x] = std::max(highest[x], row[x]);
      }
    }
    for (int x = 0; x < grid.width; ++x) {
      const auto start = static_cast<std::ptrdiff_t>(x) * cellSide;
      const auto low = *std::min_element(lowest.begin() + start, lowest.begin() + start + cellSide + 1);
      const auto high = *std::max_element(highest.begin() + start, highest.begin() + start + cellSide + 1);
      grid.at(x, y) = high - low >= leastContrast ? 1 : 0;
    }
  }
  return grid;
}

/// The bounds, in cells, of the connected cells around one of them, which are taken out of the grid.
QRect takeConnected(Grid& grid, int x, int y, std::vector<std::pair<int, int>>& open) {
  int left = x;
  int right = x;
  int bottom = y;
  const int top = y;
  grid.at(x, y) = 0;
  open.assign(1, {x, y});
  while (!open.empty()) {
    const auto [column, row] = open.back();
    open.pop_back();
    left = std::min(left, column);
    right = std::max(right, column);
    bottom = std::max(bottom, row);
    for (int nextRow = std::max(row - 1, 0); nextRow <= std::min(row + 1, grid.height - 1); ++nextRow) {
      for (int next = std::max(column - 1, 0); next <= std::min(column + 1, grid.width - 1); ++next) {
        if (!std::exchange(grid.at(next, nextRow), std::uint8_t{0})) continue;
        open.emplace_back(next, nextRow);
      }
    }
  }
  return {QPoint(left, top), QPoint(right, bottom)};
}

bool hasShape(QSize size) {
  const int shorter = std::min(size.width(), size.height());
  const int longer = std::max(size.width(), size.height());
  return shorter >= leastSide && longer <= shorter * mostElongated;
}

struct Shades {
  double darkShare = 0;
  double changesAcross = 0;  ///< in a row, on average
  double changesDown = 0;    ///< in a column
};

/// The middle between the two shades: halfway from the darkest to the lightest of a place, a few outliers put aside.
int middleShade(const QImage& grey, const QRect& place) {
  std::array<int, 256> counts{};
  for (int y = place.top(); y <= place.bottom(); y += 2) {
    const auto* row = grey.constScanLine(y);
    for (int x = place.left(); x <= place.right(); ++x) ++counts[row[x]];
  }
  const int outliers = place.width() * place.height() / 2 / 20;
  int dark = 0;
  for (int sum = counts[0]; sum <= outliers && dark < 255;) sum += counts[static_cast<std::size_t>(++dark)];
  int light = 255;
  for (int sum = counts[255]; sum <= outliers && light > 0;) sum += counts[static_cast<std::size_t>(--light)];
  return light - dark < leastContrast ? -1 : (dark + light) / 2;
}

Shades shadesOf(const QImage& grey, const QRect& place, int middle) {
  Shades shades;
  for (int y = place.top() + 1; y <= place.bottom(); ++y) {
    const auto* above = grey.constScanLine(y - 1);
    const auto* row = grey.constScanLine(y);
    int dark = 0;
    int across = 0;
    int down = 0;
    for (int x = place.left() + 1; x <= place.right(); ++x) {
      const bool isDark = row[x] < middle;
      dark += isDark ? 1 : 0;
      across += isDark != (row[x - 1] < middle) ? 1 : 0;
      down += isDark != (above[x] < middle) ? 1 : 0;
    }
    shades.darkShare += dark;
    shades.changesAcross += across;
    shades.changesDown += down;
  }
  shades.darkShare /= static_cast<double>(place.width() - 1) * (place.height() - 1);
  shades.changesAcross /= place.height() - 1;
  shades.changesDown /= place.width() - 1;
  return shades;
}

/// How much the place looks like a code; 0 when not at all.
double likeness(const QImage& grey, const QRect& place) {
  const int middle = middleShade(grey, place);
  if (middle < 0) return 0;
  const auto shades = shadesOf(grey, place, middle);
  // Light on dark, the other share counts.
  const double share = std::min(shades.darkShare, 1 - shades.darkShare);
  const double changes = std::min(shades.changesAcross, shades.changesDown);
  if (share < leastShare || changes < leastChanges) return 0;
  return share * changes;
}

}  // namespace

std::vector<QRect> codeClusters(const QImage& grey) {
  auto grid = drawnCells(grey);
  std::vector<std::pair<double, QRect>> found;
  std::vector<std::pair<int, int>> open;
  for (int y = 0; y < grid.height; ++y) {
    for (int x = 0; x < grid.width; ++x) {
      if (!grid.at(x, y)) continue;
      const auto cells = takeConnected(grid, x, y, open);
      const QRect place(cells.topLeft() * cellSide, cells.size() * cellSide);
      if (!hasShape(place.size())) continue;
      if (const double like = likeness(grey, place); like > 0) found.emplace_back(like, place);
    }
  }
  std::ranges::stable_sort(found, std::greater(), &std::pair<double, QRect>::first);
  std::vector<QRect> places;
  places.reserve(found.size());
  for (const auto& [like, place] : found) places.push_back(place);
  return places;
}

}  // namespace Nimbrel::Reader
