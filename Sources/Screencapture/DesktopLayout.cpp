#include "Screencapture/DesktopLayout.h"

#include <QRegion>

#include <algorithm>
#include <cstdlib>
#include <ranges>

namespace Nimbrel::Screencapture {

namespace {

int shownPixels(const Monitor& monitor, const QRect& area) {
  const auto shown = monitor.area & area;
  return shown.isEmpty() ? 0 : shown.width() * shown.height();
}

bool isUppermostAt(const DesktopLayout& layout, const StackedWindow& window, QPoint pixel) {
  for (const auto& other : layout.windows | std::views::reverse) {
    if (other.id == window.id) return true;
    if (other.area.contains(pixel)) return false;
  }
  return false;
}

/// The nearest of the edges that were offered.
class Nearest {
 public:
  Nearest(int from, int reach) : from_(from), distance_(reach + 1), value_(from) {}

  [[nodiscard]] bool isNearer(int edge) const { return std::abs(edge - from_) < distance_; }
  void take(int edge) {
    distance_ = std::abs(edge - from_);
    value_ = edge;
  }
  [[nodiscard]] int value() const { return value_; }

 private:
  int from_;
  int distance_;
  int value_;
};

/// The pixel of a window's edge that is nearest to a point.
QPoint nearestPixel(const QRect& area, QPoint point) {
  return {std::clamp(point.x(), area.left(), area.right()), std::clamp(point.y(), area.top(), area.bottom())};
}

}  // namespace

const Monitor& mainMonitor(const std::vector<Monitor>& monitors) {
  const auto main = std::ranges::find_if(monitors, &Monitor::isPrimary);
  return main == monitors.end() ? monitors.front() : *main;
}

const Monitor& monitorOf(const std::vector<Monitor>& monitors, const QRect& area) {
  return *std::ranges::max_element(monitors, {}, [&](const auto& monitor) { return shownPixels(monitor, area); });
}

std::optional<StackedWindow> applicationAt(const DesktopLayout& layout, QPoint point) {
  for (const auto& window : layout.windows | std::views::reverse) {
    if (window.isApplication && window.area.contains(point)) return window;
  }
  return std::nullopt;
}

bool isWhollyVisible(const DesktopLayout& layout, const StackedWindow& window) {
  QRegion shown;
  for (const auto& monitor : layout.monitors) shown += monitor.area;
  for (const auto& other : layout.windows | std::views::reverse) {
    if (other.id == window.id) break;
    shown -= other.area;
  }
  return QRegion(window.area).subtracted(shown).isEmpty();
}

QPoint snapped(const DesktopLayout& layout, QPoint point, int reach) {
  Nearest x(point.x(), reach);
  Nearest y(point.y(), reach);
  const auto offer = [&](const QRect& area, const auto& isSeen) {
    const auto near = area.adjusted(-reach, -reach, reach, reach);
    if (!near.contains(point) && !near.contains(point - QPoint(1, 1))) return;
    const auto pixel = nearestPixel(area, point);
    const auto [left, right] = std::pair(area.left(), area.right());
    const auto [top, bottom] = std::pair(area.top(), area.bottom());
    if (x.isNearer(left) && isSeen(QPoint(left, pixel.y()))) x.take(left);
    if (x.isNearer(right + 1) && isSeen(QPoint(right, pixel.y()))) x.take(right + 1);
    if (y.isNearer(top) && isSeen(QPoint(pixel.x(), top))) y.take(top);
    if (y.isNearer(bottom + 1) && isSeen(QPoint(pixel.x(), bottom))) y.take(bottom + 1);
  };
  for (const auto& monitor : layout.monitors) offer(monitor.area, [](QPoint) { return true; });
  for (const auto& window : layout.windows) {
    if (!window.isApplication) continue;
    offer(window.area, [&](QPoint pixel) { return isUppermostAt(layout, window, pixel); });
  }
  return {x.value(), y.value()};
}

}  // namespace Nimbrel::Screencapture
