#include "Views/Pins/PinGrip.h"

#include <QApplication>
#include <QScreen>
#include <QWindow>

namespace Nimbrel {

namespace {

Qt::CursorShape cursorFor(Qt::Edges edges) {
  const bool across(edges & (Qt::LeftEdge | Qt::RightEdge));
  const bool down(edges & (Qt::TopEdge | Qt::BottomEdge));
  if (across && down) {
    const bool falls = edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge);
    return falls ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
  }
  if (across) return Qt::SizeHorCursor;
  return down ? Qt::SizeVerCursor : Qt::ArrowCursor;
}

}  // namespace

void PinGrip::hover(const QPointF& point) {
  const auto shape = cursorFor(PinGeometry::edgesAt(point, window_.size()));
  if (window_.cursor().shape() != shape) window_.setCursor(shape);
}

QWindow* PinGrip::placedByDesktop() const { return stacking_.canPlace() ? nullptr : window_.windowHandle(); }

void PinGrip::press(const QPointF& point, const QPoint& onDesktop) {
  const auto edges = PinGeometry::edgesAt(point, window_.size());
  auto* handle = placedByDesktop();
  if (edges && handle != nullptr && handle->startSystemResize(edges)) return;
  start_ = Start{.pointer = onDesktop, .window = window_.geometry(), .edges = edges, .hasMoved = false};
}

void PinGrip::drag(const QPoint& onDesktop, PinGeometry::Ratio ratio) {
  if (!start_) return;
  const auto by = onDesktop - start_->pointer;
  if (!start_->edges) return move(*start_, by);
  window_.setGeometry(PinGeometry::dragged(start_->window, start_->edges, by, ratio, limits()));
}

void PinGrip::move(Start& start, const QPoint& by) {
  if (!start.hasMoved && by.manhattanLength() < QApplication::startDragDistance()) return;
  auto* handle = placedByDesktop();
  if (!start.hasMoved && handle != nullptr && handle->startSystemMove()) return start_.reset();
  start.hasMoved = true;
  window_.move(start.window.topLeft() + by);
}

PinGeometry::Limits PinGrip::limits() const { return {.largest = window_.screen()->availableGeometry().size()}; }

}  // namespace Nimbrel
