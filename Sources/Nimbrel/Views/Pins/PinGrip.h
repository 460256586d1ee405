#pragma once

#include "Platform/WindowStacking.h"
#include "Views/Pins/PinGeometry.h"

#include <QPoint>
#include <QRect>
#include <QWidget>

#include <optional>

class QWindow;

namespace Nimbrel {

/// Moves a window without a frame by any point of it, and resizes it by its edges, as the pointer drags. Whoever owns
/// it hands on the events of the pointer. Main thread.
class PinGrip {
 public:
  /// Both are borrowed and must outlive it.
  PinGrip(QWidget& window, const WindowStacking& stacking) : window_(window), stacking_(stacking) {}

  /// Shows by the pointer what dragging there would do; the point is one of the window.
  void hover(const QPointF& point);
  void press(const QPointF& point, const QPoint& onDesktop);
  void drag(const QPoint& onDesktop, PinGeometry::Ratio ratio);
  void release() { start_.reset(); }

  /// What the user's hand may make of the window on the screen where it is.
  [[nodiscard]] PinGeometry::Limits limits() const;

 private:
  /// The window where the desktop alone can move it or an edge of it; null where we can. There we do: on X11 a desktop
  /// takes hold where the pointer is by the time that it hears of the drag, and not where the button was pressed.
  [[nodiscard]] QWindow* placedByDesktop() const;

  struct Start {
    QPoint pointer;  ///< on the desktop
    QRect window;
    Qt::Edges edges;
    bool hasMoved;  ///< farther than a hand trembles
  };

  void move(Start& start, const QPoint& by);

  QWidget& window_;
  const WindowStacking& stacking_;
  std::optional<Start> start_;  ///< while a button is held, unless the desktop has taken over
};

}  // namespace Nimbrel
