#include "Views/Companion/PanelPlacement.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace Nimbrel {

namespace {

constexpr int margin = 8;
constexpr int gap = 4;
/// The thickest panels that have trays.
constexpr int nearEdge = 64;
constexpr double listShare = 0.42;
constexpr int leastList = 285;
constexpr int mostList = 470;
constexpr int listWithoutScreen = 336;
constexpr std::ptrdiff_t mostShots = 10;

std::optional<std::size_t> screenAt(QPoint point, const std::vector<PanelPlacement::Screen>& screens) {
  const auto found = std::ranges::find_if(screens, [&](const auto& screen) { return screen.whole.contains(point); });
  if (found == screens.end()) return std::nullopt;
  return static_cast<std::size_t>(found - screens.begin());
}

bool isNearEdge(QPoint point, const QRect& screen) {
  const auto nearest = std::min(
      {point.x() - screen.left(), screen.right() - point.x(), point.y() - screen.top(), screen.bottom() - point.y()});
  return nearest < nearEdge;
}

/// A stretch of that length as near to `start` as the room allows; at the beginning of the room where it is too long.
int within(int start, int length, int first, int last) { return std::max(std::min(start, last + 1 - length), first); }

}  // namespace

std::optional<QRect> PanelPlacement::anchor(const QRect& icon, QPoint pointer, const std::vector<Screen>& screens) {
  if (!icon.isEmpty() && screenAt(icon.center(), screens)) return icon;
  const auto screen = screenAt(pointer, screens);
  if (!screen || !isNearEdge(pointer, screens[*screen].whole)) return std::nullopt;
  return QRect(pointer, QSize(1, 1));
}

std::size_t PanelPlacement::screenOf(const std::optional<QRect>& anchor, QPoint pointer,
                                     const std::vector<Screen>& screens) {
  return screenAt(anchor ? anchor->center() : pointer, screens).value_or(0);
}

QRect PanelPlacement::place(const std::optional<QRect>& anchor, QSize panel, const Screen& screen) {
  const auto room = screen.available.adjusted(margin, margin, -margin, -margin);
  if (!anchor) return {{within(room.right(), panel.width(), room.left(), room.right()), room.top()}, panel};
  const bool opensDown = anchor->center().y() < screen.whole.center().y();
  const auto top = opensDown ? anchor->bottom() + 1 + gap : anchor->top() - gap - panel.height();
  const auto left = anchor->center().x() - panel.width() / 2;
  return {{within(left, panel.width(), room.left(), room.right()),
           within(std::max(top, room.top()), panel.height(), room.top(), room.bottom())},
          panel};
}

int PanelPlacement::listHeight(std::optional<int> availableHeight) {
  if (!availableHeight) return std::min(listWithoutScreen, mostList);
  return std::min(std::max(static_cast<int>(std::lround(*availableHeight * listShare)), leastList), mostList);
}

ShotList PanelPlacement::recent(const ShotList& shots) {
  const auto count = std::min(std::ssize(shots), mostShots);
  return {shots.begin(), shots.begin() + count};
}

}  // namespace Nimbrel
