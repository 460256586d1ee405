#pragma once

#include <QPoint>
#include <QRect>
#include <Qt>

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace Nimbrel {

/// Lengths that the grid is laid out by, in device-independent pixels; the heights of text are those of its fonts.
struct GridMetrics {
  double thumbSize = 190;  ///< width of a cell; one that no grid can be made of is held within bounds
  int sectionTitleHeight = 18;
  int titleHeight = 14;
  int metaHeight = 13;
  int snippetHeight = 13;

  bool operator==(const GridMetrics&) const = default;
};

/// A stretch of cells under a title, or under none.
struct GridSection {
  std::size_t cells = 0;
  bool hasTitle = true;
};

/// A place in the content that stays where it is on the screen while the layout changes: a cell, and how far its top
/// lies above the top of the screen.
struct GridAnchor {
  std::size_t cell = 0;
  int offset = 0;

  bool operator==(const GridAnchor&) const = default;
};

/// Where the cells and titles of the gallery's grid are, for any number of cells, which are numbered through all
/// sections: only rows are remembered, and looking something up takes a binary search in them. All cells are as wide as
/// the thumbnails, rows as high as the highest of their cells, and what does not fill the width stays where lines
/// begin. A plain value; knows no shot and no font.
class GridLayout {
 public:
  /// How many columns the width holds, as the keyboard movement counts them; 1 at least.
  [[nodiscard]] static int columnsIn(int width, double thumbSize);

  void setMetrics(const GridMetrics& metrics);
  void setWidth(int width);
  void setDirection(Qt::LayoutDirection direction) { direction_ = direction; }
  /// Lays out anew; no cell has a snippet then.
  void setSections(std::span<const GridSection> sections);
  /// Makes room for the snippets of these cells, which are found out when they come onto the screen. Returns whether
  /// anything moved for it.
  bool addSnippets(std::span<const std::size_t> cells);

  [[nodiscard]] std::size_t cellCount() const { return hasSnippet_.size(); }
  [[nodiscard]] int columns() const { return columns_; }
  /// Of the whole content.
  [[nodiscard]] int height() const { return height_; }

  [[nodiscard]] QSize boxSize() const;
  /// The place of a cell, as high as its own content.
  [[nodiscard]] QRect cell(std::size_t cell) const;
  [[nodiscard]] std::optional<std::size_t> cellAt(QPoint point) const;
  /// The cells that meet the rectangle, in their order.
  [[nodiscard]] std::vector<std::size_t> cellsIn(const QRect& rectangle) const;
  /// The bar of a section's title; empty for a section without one.
  [[nodiscard]] QRect title(std::size_t section) const;
  [[nodiscard]] std::vector<std::size_t> titlesIn(const QRect& rectangle) const;

  /// The first cell of the row at the top of a screen that begins at `y`, or of the one below where none is; absent
  /// without cells.
  [[nodiscard]] std::optional<GridAnchor> anchorAt(int y) const;
  /// Where the screen has to begin for the anchor to be where it was.
  [[nodiscard]] int position(const GridAnchor& anchor) const;

 private:
  struct Row {
    int top = 0;
    int height = 0;
    std::size_t firstCell = 0;
    std::size_t cells = 0;
  };
  struct Placed {
    GridSection section;
    std::size_t firstCell = 0;
    int titleTop = 0;
  };

  void layOut();
  [[nodiscard]] Row placedRow(int top, std::size_t firstCell, std::size_t cells) const;
  [[nodiscard]] int titleHeight(const GridSection& section) const;
  [[nodiscard]] int cellHeight(bool withSnippet) const;
  [[nodiscard]] int left(std::size_t column) const;
  [[nodiscard]] std::vector<Row>::const_iterator rowOf(std::size_t cell) const;
  /// The first row that ends below `y`.
  [[nodiscard]] std::vector<Row>::const_iterator rowBelow(int y) const;
  [[nodiscard]] QRect place(const Row& row, std::size_t cell) const;

  GridMetrics metrics_;
  int width_ = 0;
  Qt::LayoutDirection direction_ = Qt::LeftToRight;
  std::vector<Placed> sections_;
  std::vector<bool> hasSnippet_;  ///< for each cell

  std::vector<Row> rows_;
  int columns_ = 1;
  int height_ = 0;
};

}  // namespace Nimbrel
