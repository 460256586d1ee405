#pragma once

#include <QPoint>
#include <QRect>
#include <QString>
#include <QWidget>

#include <cstddef>
#include <optional>

namespace Nimbrel {

/// A widget that paints cells, as assistive technology finds them: a list with an item for each. Mixed into a class
/// that is a QWidget.
class CellHost {
 public:
  CellHost() = default;
  CellHost(const CellHost&) = delete;
  CellHost& operator=(const CellHost&) = delete;
  virtual ~CellHost() = default;

  [[nodiscard]] virtual std::size_t cellCount() const = 0;
  /// What a cell says.
  [[nodiscard]] virtual QString cellName(std::size_t cell) const = 0;
  /// In the widget's coordinates; may lie outside of what is seen of it.
  [[nodiscard]] virtual QRect cellPlace(std::size_t cell) const = 0;
  /// The same the other way round.
  [[nodiscard]] virtual std::optional<std::size_t> cellAt(QPoint place) const = 0;
  [[nodiscard]] virtual bool isCellSelected(std::size_t cell) const = 0;
  /// As a click on it does.
  virtual void chooseCell(std::size_t cell) = 0;
};

/// Lets all widgets that are a CellHost be read as one. Any number of times.
void installCellAccessibility();

/// Tells that the cells are others, or that one of them has the keyboard.
void tellCellsChanged(QWidget& host);
void tellCellFocused(QWidget& host, std::size_t cell);

}  // namespace Nimbrel
