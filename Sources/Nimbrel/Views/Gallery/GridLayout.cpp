#include "Views/Gallery/GridLayout.h"

#include <algorithm>
#include <cmath>

namespace Nimbrel {

namespace {

constexpr int outerPadding = 12;
constexpr int sidePadding = 16;
constexpr int sectionSpacing = 18;
constexpr int titleSpacing = 8;
constexpr int titlePadding = 6;
constexpr int cellSpacing = 14;
constexpr int partSpacing = 5;
constexpr int snippetPadding = 1;
constexpr double boxProportion = 0.66;
// Both paddings, less the spacing that the last column does not need.
constexpr int takenFromWidth = 2 * sidePadding - cellSpacing;

// What else a file of settings says is none that a grid can be made of.
constexpr double smallestThumb = 16;
constexpr double largestThumb = 4096;

double held(double thumbSize) {
  return std::isnan(thumbSize) ? smallestThumb : std::clamp(thumbSize, smallestThumb, largestThumb);
}

}  // namespace

int GridLayout::columnsIn(int width, double thumbSize) {
  return std::max(1, static_cast<int>((width - takenFromWidth) / (held(thumbSize) + cellSpacing)));
}

void GridLayout::setMetrics(const GridMetrics& metrics) {
  auto usable = metrics;
  usable.thumbSize = held(metrics.thumbSize);
  if (usable == metrics_) return;
  metrics_ = usable;
  layOut();
}

void GridLayout::setWidth(int width) {
  if (width == width_) return;
  width_ = width;
  layOut();
}

void GridLayout::setSections(std::span<const GridSection> sections) {
  sections_.clear();
  std::size_t cells = 0;
  for (const auto& section : sections) {
    sections_.push_back({.section = section, .firstCell = cells, .titleTop = 0});
    cells += section.cells;
  }
  hasSnippet_.assign(cells, false);
  layOut();
}

bool GridLayout::addSnippets(std::span<const std::size_t> cells) {
  const auto before = height_;
  for (const auto cell : cells) hasSnippet_[cell] = true;
  layOut();
  return height_ != before;
}

void GridLayout::layOut() {
  columns_ = columnsIn(width_, metrics_.thumbSize);
  rows_.clear();
  int y = outerPadding;
  const auto perRow = static_cast<std::size_t>(columns_);
  for (auto& placed : sections_) {
    if (&placed != &sections_.front()) y += sectionSpacing;
    placed.titleTop = y;
    if (placed.section.hasTitle) y += titleHeight(placed.section) + titleSpacing;
    const auto end = placed.firstCell + placed.section.cells;
    for (auto cell = placed.firstCell; cell < end; cell += perRow) {
      if (cell != placed.firstCell) y += cellSpacing;
      rows_.push_back(placedRow(y, cell, std::min(perRow, end - cell)));
      y += rows_.back().height;
    }
  }
  height_ = y + outerPadding;
}

GridLayout::Row GridLayout::placedRow(int top, std::size_t firstCell, std::size_t cells) const {
  const auto begin = hasSnippet_.begin() + static_cast<std::ptrdiff_t>(firstCell);
  const bool withSnippet =
      std::find(begin, begin + static_cast<std::ptrdiff_t>(cells), true) != begin + static_cast<std::ptrdiff_t>(cells);
  return {.top = top, .height = cellHeight(withSnippet), .firstCell = firstCell, .cells = cells};
}

int GridLayout::titleHeight(const GridSection& section) const {
  return section.hasTitle ? metrics_.sectionTitleHeight + 2 * titlePadding : 0;
}

QSize GridLayout::boxSize() const {
  return {static_cast<int>(std::lround(metrics_.thumbSize)),
          static_cast<int>(std::lround(metrics_.thumbSize * boxProportion))};
}

int GridLayout::cellHeight(bool withSnippet) const {
  const int height = boxSize().height() + partSpacing + metrics_.titleHeight + partSpacing + metrics_.metaHeight;
  return withSnippet ? height + partSpacing + snippetPadding + metrics_.snippetHeight : height;
}

int GridLayout::left(std::size_t column) const {
  const int fromEdge = sidePadding + static_cast<int>(column) * (boxSize().width() + cellSpacing);
  return direction_ == Qt::RightToLeft ? width_ - fromEdge - boxSize().width() : fromEdge;
}

std::vector<GridLayout::Row>::const_iterator GridLayout::rowOf(std::size_t cell) const {
  return std::prev(std::ranges::upper_bound(rows_, cell, {}, &Row::firstCell));
}

std::vector<GridLayout::Row>::const_iterator GridLayout::rowBelow(int y) const {
  return std::ranges::upper_bound(rows_, y, {}, [](const Row& row) { return row.top + row.height; });
}

QRect GridLayout::place(const Row& row, std::size_t cell) const {
  return {left(cell - row.firstCell), row.top, boxSize().width(), cellHeight(hasSnippet_[cell])};
}

QRect GridLayout::cell(std::size_t cell) const { return place(*rowOf(cell), cell); }

std::optional<std::size_t> GridLayout::cellAt(QPoint point) const {
  const auto row = rowBelow(point.y());
  if (row == rows_.end()) return std::nullopt;
  for (auto cell = row->firstCell; cell < row->firstCell + row->cells; ++cell) {
    if (place(*row, cell).contains(point)) return cell;
  }
  return std::nullopt;
}

std::vector<std::size_t> GridLayout::cellsIn(const QRect& rectangle) const {
  std::vector<std::size_t> cells;
  for (auto row = rowBelow(rectangle.top()); row != rows_.end() && row->top <= rectangle.bottom(); ++row) {
    for (auto cell = row->firstCell; cell < row->firstCell + row->cells; ++cell) {
      if (place(*row, cell).intersects(rectangle)) cells.push_back(cell);
    }
  }
  return cells;
}

QRect GridLayout::title(std::size_t section) const {
  const auto& placed = sections_[section];
  return {0, placed.titleTop, width_, titleHeight(placed.section)};
}

std::vector<std::size_t> GridLayout::titlesIn(const QRect& rectangle) const {
  std::vector<std::size_t> titles;
  const auto above = std::ranges::upper_bound(sections_, rectangle.top(), {}, &Placed::titleTop);
  auto section = static_cast<std::size_t>(above - sections_.begin());
  // The last one that begins above may reach into it.
  if (section > 0) --section;
  for (; section < sections_.size() && sections_[section].titleTop <= rectangle.bottom(); ++section) {
    if (sections_[section].section.hasTitle && title(section).intersects(rectangle)) titles.push_back(section);
  }
  return titles;
}

std::optional<GridAnchor> GridLayout::anchorAt(int y) const {
  if (rows_.empty()) return std::nullopt;
  auto row = rowBelow(y);
  if (row == rows_.end()) --row;
  return GridAnchor{.cell = row->firstCell, .offset = y - row->top};
}

int GridLayout::position(const GridAnchor& anchor) const { return rowOf(anchor.cell)->top + anchor.offset; }

}  // namespace Nimbrel
