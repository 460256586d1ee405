#include "Editing/PixelSpace.h"

#include <algorithm>
#include <cmath>

namespace Nimbrel::Flatten {

namespace {

constexpr double farthest = 1e6;
constexpr double roundingError = 1e-6;

bool isNumber(QPointF point) { return !std::isnan(point.x()) && !std::isnan(point.y()); }

double scaled(double coordinate, int length) { return std::clamp(coordinate, -farthest, farthest) * length; }

int pixelBelow(double edge, int length) {
  return static_cast<int>(std::clamp(std::floor(edge + roundingError), 0.0, static_cast<double>(length)));
}

int pixelAbove(double edge, int length) {
  return static_cast<int>(std::clamp(std::ceil(edge - roundingError), 0.0, static_cast<double>(length)));
}

}  // namespace

bool hasPlace(const Annotation& mark) {
  return isNumber(mark.start) && (liesAtOnePoint(mark.kind) || isNumber(mark.end));
}

QPointF inPixels(QPointF point, QSize picture) {
  return {scaled(point.x(), picture.width()), scaled(point.y(), picture.height())};
}

QRectF inPixels(const Annotation& mark, QSize picture) {
  return QRectF(inPixels(mark.start, picture), inPixels(mark.end, picture)).normalized();
}

QRect touchedPixels(const QRectF& rect, QSize picture) {
  const QPoint first(pixelBelow(rect.left(), picture.width()), pixelBelow(rect.top(), picture.height()));
  const QPoint end(pixelAbove(rect.right(), picture.width()), pixelAbove(rect.bottom(), picture.height()));
  return {first, QSize(end.x() - first.x(), end.y() - first.y())};
}

MarkSizes::MarkSizes(QSize picture)
    : lineWidth(std::max(picture.width() / 420.0, 2.0)),
      labelFont(std::max(picture.width() / 45.0, 18.0)),
      stepRadius(std::max(picture.width() / 70.0, 14.0)),
      stepFont(stepRadius * 1.25),
      blurRadius(std::max(picture.width() / 130.0, 6.0)) {}

double MarkSizes::arrowHead(double arrowLength) const {
  return std::max(std::min(arrowLength * 0.25, lineWidth * 9), lineWidth * 4);
}

}  // namespace Nimbrel::Flatten
