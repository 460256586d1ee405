#include "Screencapture/AreaSelection.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

/// Moved no further than to the border, on that border a point between pixels included.
QPoint heldWithin(const QRect& bounds, QPoint point) {
  return {std::clamp(point.x(), bounds.left(), bounds.right() + 1),
          std::clamp(point.y(), bounds.top(), bounds.bottom() + 1)};
}

/// The pointer stops on the last pixel, and what is meant there is all of it.
QPoint behindLast(const QRect& bounds, QPoint point) {
  return {point.x() == bounds.right() ? bounds.right() + 1 : point.x(),
          point.y() == bounds.bottom() ? bounds.bottom() + 1 : point.y()};
}

QRect movedWithin(const QRect& bounds, const QRect& area, QPoint step) {
  auto moved = area.translated(step);
  moved.moveLeft(std::clamp(moved.left(), bounds.left(), bounds.right() + 1 - area.width()));
  moved.moveTop(std::clamp(moved.top(), bounds.top(), bounds.bottom() + 1 - area.height()));
  return moved;
}

/// Never empty: the pixel behind the point where there is nothing between the two, before it at the border.
std::pair<int, int> span(int one, int other, int last) {
  const auto [low, high] = std::minmax(one, other);
  if (low != high) return {low, high - low};
  return {std::min(low, last), 1};
}

}  // namespace

AreaSelection::AreaSelection(DesktopLayout layout, CaptureRequest::Subject subject, Reaches reaches)
    : layout_(std::move(layout)), subject_(subject), reaches_(reaches) {}

void AreaSelection::movePointer(QPoint position) {
  const auto step = position - std::exchange(pointer_, position);
  if (isDragged_) {
    if (isCarried_) return carry(step);
    if (!step.isNull()) isNudged_ = false;
    corner_ = cornerAt(position + offset_);
  } else if (!pressed_) {
    hovered_ = applicationAt(layout_, position);
  } else if (subject_ != CaptureRequest::Subject::window) {
    const auto way = position - *pressed_;
    if (std::max(std::abs(way.x()), std::abs(way.y())) > reaches_.drag) beginDrag();
  }
}

void AreaSelection::press() { pressed_ = pointer_; }

std::optional<ChosenArea> AreaSelection::release() {
  if (!pressed_) return std::nullopt;
  auto chosen = take();
  pressed_.reset();
  return chosen;
}

std::optional<ChosenArea> AreaSelection::take() const {
  if (const auto window = proposedWindow()) return ChosenArea{window->area, window};
  if (subject_ == CaptureRequest::Subject::window || area().isEmpty()) return std::nullopt;
  return ChosenArea{area(), std::nullopt};
}

void AreaSelection::nudge(QPoint step) {
  if (subject_ == CaptureRequest::Subject::window) return;
  if (!isDragged_) {
    if (const auto proposed = area(); !proposed.isEmpty()) nudged_ = movedWithin(layout_.bounds, proposed, step);
  } else if (isCarried_) {
    carry(step);
  } else {
    isNudged_ = true;
    corner_ = heldWithin(layout_.bounds, corner_ + step);
    offset_ = corner_ - pointer_;
  }
}

QRect AreaSelection::area() const {
  if (isDragged_) return draggedArea();
  if (nudged_) return *nudged_;
  return hovered_ ? hovered_->area & layout_.bounds : QRect();
}

std::optional<StackedWindow> AreaSelection::proposedWindow() const {
  return subject_ == CaptureRequest::Subject::window ? hovered_ : std::nullopt;
}

QRect AreaSelection::draggedArea() const {
  const auto [x, width] = span(anchor_.x(), corner_.x(), layout_.bounds.right());
  const auto [y, height] = span(anchor_.y(), corner_.y(), layout_.bounds.bottom());
  return {x, y, width, height};
}

QPoint AreaSelection::cornerAt(QPoint position) const {
  const auto point = heldWithin(layout_.bounds, position);
  if (isNudged_) return point;
  if (isExact_) return behindLast(layout_.bounds, point);
  auto corner = snapped(layout_, point, reaches_.snap);
  // An edge that caught the one side must not catch the other as well.
  if (isDragged_ && corner.x() == anchor_.x()) corner.setX(point.x());
  if (isDragged_ && corner.y() == anchor_.y()) corner.setY(point.y());
  return corner;
}

void AreaSelection::beginDrag() {
  offset_ = {};
  isNudged_ = false;
  anchor_ = cornerAt(*pressed_);
  isDragged_ = true;
  nudged_.reset();
  corner_ = cornerAt(pointer_);
}

void AreaSelection::carry(QPoint step) {
  const auto from = draggedArea();
  const auto moved = movedWithin(layout_.bounds, from, step).topLeft() - from.topLeft();
  anchor_ += moved;
  corner_ += moved;
  offset_ = corner_ - pointer_;
}

}  // namespace Nimbrel::Screencapture
