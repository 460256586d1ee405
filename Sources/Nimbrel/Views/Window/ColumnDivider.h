#pragma once

#include <QWidget>

#include <optional>

namespace Nimbrel {

/// The line between a column and its neighbour, by which the column's width is dragged. It lies over both with a strip
/// wider than the line, in the middle of which that is painted. Widths are device-independent pixels.
class ColumnDivider final : public QWidget {
  Q_OBJECT

 public:
  /// Where the column stands whose width it is, in the direction of the script.
  enum class Column { BeforeIt, BehindIt };
  struct Bounds {
    int minimum;
    int maximum;
  };

  ColumnDivider(Column column, Bounds bounds, QWidget* parent = nullptr);

  /// The width that the column has, from which a drag starts.
  void setColumnWidth(int width) { width_ = width; }
  [[nodiscard]] int columnWidth() const { return width_; }

 Q_SIGNALS:
  /// The user drags the column to that width, within the bounds.
  void columnWidthChanged(int width);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  Column column_;
  Bounds bounds_;
  int width_;
  double pressedAt_ = 0;           ///< on the desktop
  std::optional<int> startWidth_;  ///< while dragging
};

}  // namespace Nimbrel
