#include "Views/Pins/PinGeometry.h"

#include <algorithm>
#include <cmath>

namespace Nimbrel::PinGeometry {

namespace {

int rounded(double value) { return static_cast<int>(std::lround(value)); }

/// A dragged length within its limits, of which the former one may break one already.
int within(int length, int former, int smallest, int largest) {
  return std::clamp(length, std::min(smallest, former), std::max(largest, former));
}

Qt::Edges edgesWithin(int reach, const QPointF& point, const QSize& window) {
  Qt::Edges edges;
  if (point.x() < reach) edges |= Qt::LeftEdge;
  if (point.x() >= window.width() - reach) edges |= Qt::RightEdge;
  if (point.y() < reach) edges |= Qt::TopEdge;
  if (point.y() >= window.height() - reach) edges |= Qt::BottomEdge;
  return edges;
}

/// The factor nearest to the wanted one at which a window of that size keeps the limits. A window that breaks one of
/// them already may stay as it is.
double allowedFactor(double factor, const QSizeF& window, const Limits& limits) {
  const auto least = std::max(limits.smallest.width() / window.width(), limits.smallest.height() / window.height());
  const auto most = std::min(limits.largest.width() / window.width(), limits.largest.height() / window.height());
  return std::clamp(factor, std::min(least, 1.0), std::max(most, 1.0));
}

/// How many times as large the drag makes the window.
double draggedFactor(const QSizeF& start, Qt::Edges edges, const QSizeF& wanted) {
  const auto across = wanted.width() / start.width();
  const auto down = wanted.height() / start.height();
  if (!(edges & (Qt::TopEdge | Qt::BottomEdge))) return across;
  if (!(edges & (Qt::LeftEdge | Qt::RightEdge))) return down;
  return std::max(across, down);
}

}  // namespace

QSizeF naturalSize(const QSize& pixels, double scale) {
  return {std::max(1.0, pixels.width() / scale), std::max(1.0, pixels.height() / scale)};
}

QSize openedSize(const QSizeF& natural) {
  const auto scale = std::min({largestSide / natural.width(), largestSide / natural.height(), 1.0});
  return {std::max(smallestWidth, rounded(natural.width() * scale)),
          std::max(smallestHeight, rounded(natural.height() * scale))};
}

QPoint openedPlace(const QRect& freePart, const QSize& pin, int others) {
  const auto cascade = margin + others * cascadeStep;
  const auto x = freePart.x() + freePart.width() - pin.width() - cascade;
  const auto lowest = freePart.y() + freePart.height() - pin.height();
  return {std::max(freePart.x(), x), std::max(freePart.y(), std::min(freePart.y() + cascade, lowest))};
}

QRectF picturePlace(const QSizeF& natural, const QSizeF& window, Enlarged enlarged) {
  auto scale = std::min(window.width() / natural.width(), window.height() / natural.height());
  if (enlarged == Enlarged::No) scale = std::min(scale, 1.0);
  const auto shown = natural * scale;
  return {QPointF((window.width() - shown.width()) / 2, (window.height() - shown.height()) / 2), shown};
}

Qt::Edges edgesAt(const QPointF& point, const QSize& window) {
  return edgesWithin(edgeReach, point, window) ? edgesWithin(cornerReach, point, window) : Qt::Edges();
}

QRect dragged(const QRect& start, Qt::Edges edges, const QPoint& by, Ratio ratio, const Limits& limits) {
  auto size = start.size();
  if (edges & Qt::LeftEdge) size.rwidth() -= by.x();
  if (edges & Qt::RightEdge) size.rwidth() += by.x();
  if (edges & Qt::TopEdge) size.rheight() -= by.y();
  if (edges & Qt::BottomEdge) size.rheight() += by.y();
  if (ratio == Ratio::Kept) {
    const QSizeF before(start.size());
    const auto after = before * allowedFactor(draggedFactor(before, edges, QSizeF(size)), before, limits);
    size = {rounded(after.width()), rounded(after.height())};
  } else {
    size = {within(size.width(), start.width(), limits.smallest.width(), limits.largest.width()),
            within(size.height(), start.height(), limits.smallest.height(), limits.largest.height())};
  }
  QRect window(start.topLeft(), size);
  if (edges & Qt::LeftEdge) window.moveRight(start.right());
  if (edges & Qt::TopEdge) window.moveBottom(start.bottom());
  return window;
}

QRectF scaled(const QRectF& window, double factor, const QPointF& anchor, const Limits& limits) {
  const auto allowed = allowedFactor(factor, window.size(), limits);
  return {anchor + (window.topLeft() - anchor) * allowed, window.size() * allowed};
}

}  // namespace Nimbrel::PinGeometry
