#include "Screencapture/StopControlPlace.h"

#include <algorithm>
#include <array>

namespace Nimbrel::Screencapture {

namespace {

constexpr int distance = 12;

QRect movedWithin(QRect rectangle, const QRect& bounds) {
  rectangle.moveRight(std::min(rectangle.right(), bounds.right()));
  rectangle.moveBottom(std::min(rectangle.bottom(), bounds.bottom()));
  rectangle.moveLeft(std::max(rectangle.left(), bounds.left()));
  rectangle.moveTop(std::max(rectangle.top(), bounds.top()));
  return rectangle;
}

}  // namespace

std::optional<QRect> placeOutside(const QRect& area, const QRect& monitor, const QSize& control) {
  const auto seen = area.intersected(monitor);
  if (seen.isEmpty()) return placeInside(area, monitor, control);
  QRect middle(QPoint(), control);
  middle.moveCenter(seen.center());
  const std::array places = {
      middle.translated(0, seen.bottom() + 1 + distance - middle.top()),
      middle.translated(0, seen.top() - distance - control.height() - middle.top()),
      middle.translated(seen.right() + 1 + distance - middle.left(), 0),
      middle.translated(seen.left() - distance - control.width() - middle.left(), 0),
  };
  for (const auto& place : places) {
    const auto moved = movedWithin(place, monitor);
    if (!moved.intersects(seen) && monitor.contains(moved)) return moved;
  }
  return std::nullopt;
}

QRect placeInside(const QRect& area, const QRect& monitor, const QSize& control) {
  const auto seen = area.intersects(monitor) ? area.intersected(monitor) : monitor;
  QRect corner(QPoint(), control);
  corner.moveBottomRight(seen.bottomRight() - QPoint(distance, distance));
  return movedWithin(corner, monitor);
}

}  // namespace Nimbrel::Screencapture
