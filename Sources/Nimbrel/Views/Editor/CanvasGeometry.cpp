#include "Views/Editor/CanvasGeometry.h"

#include "Views/Shared/Measures.h"

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr double margin = Measures::step16;
constexpr double largestPixel = 16;  ///< pixels of the screen

}  // namespace

QSizeF CanvasGeometry::fitted() const {
  const auto inner = room - QSizeF(2 * margin, 2 * margin);
  if (picture.isEmpty() || inner.isEmpty()) return {0, 0};
  return picture * std::min(inner.width() / picture.width(), inner.height() / picture.height());
}

QRectF CanvasGeometry::place() const {
  const auto size = shown();
  // In the middle while there is room; once there is none it scrolls, with its margin.
  const auto start = [](double whole, double length, double moved) {
    return std::max(margin, (whole - length) / 2) - moved;
  };
  return {QPointF(start(room.width(), size.width(), scrolled.x()), start(room.height(), size.height(), scrolled.y())),
          size};
}

double CanvasGeometry::pixelZoom(double scale) const {
  const auto width = fitted().width();
  return width > 0 ? picture.width() / (scale * width) : 1;
}

double CanvasGeometry::possibleZoom(double wanted, double scale) const {
  const auto pixels = pixelZoom(scale);
  return std::clamp(wanted, std::min(1.0, pixels), std::max(1.0, pixels * largestPixel));
}

CanvasGeometry CanvasGeometry::zoomed(double newZoom, QPointF anchor) const {
  auto changed = *this;
  changed.zoom = newZoom;
  changed.scrolled = {};
  changed.scrolled = changed.toCanvas(toFitted(anchor)) - anchor;
  return changed;
}

}  // namespace Nimbrel
