#include "Views/Shared/Painting.h"

#include <algorithm>
#include <cmath>

namespace Nimbrel::Painting {

namespace {

double snapped(double value, double scale) { return std::round(value * scale) / scale; }

}  // namespace

double scaleOf(const QPainter& painter) { return std::sqrt(std::abs(painter.deviceTransform().determinant())); }

double hairlineWidth(double scale) { return std::max(1.0, std::round(scale)) / scale; }

QRectF onGrid(const QPainter& painter, const QRectF& place) {
  const auto scale = scaleOf(painter);
  // What is painted may stand anywhere in its window, whose own corner is on the grid.
  const auto origin = QPointF(painter.deviceTransform().dx(), painter.deviceTransform().dy()) / scale;
  const auto moved = place.translated(origin);
  const QRectF grid(QPointF(snapped(moved.left(), scale), snapped(moved.top(), scale)),
                    QPointF(snapped(moved.right(), scale), snapped(moved.bottom(), scale)));
  return grid.translated(-origin);
}

void fillRounded(QPainter& painter, const QRectF& place, double radius, const QColor& fill) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(fill);
  painter.drawRoundedRect(onGrid(painter, place), radius, radius);
  painter.restore();
}

void strokeRounded(QPainter& painter, const QRectF& place, double radius, double width, const QColor& color) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(color, width));
  painter.setBrush(Qt::NoBrush);
  const auto half = width / 2;
  const auto inner = std::max(0.0, radius - half);
  painter.drawRoundedRect(onGrid(painter, place).adjusted(half, half, -half, -half), inner, inner);
  painter.restore();
}

void fillOutlined(QPainter& painter, const QRectF& place, double radius, const QColor& fill, const QColor& outline) {
  const auto width = hairlineWidth(scaleOf(painter));
  if (radius <= 0) {
    const auto whole = onGrid(painter, place);
    painter.fillRect(whole, outline);
    return painter.fillRect(whole.adjusted(width, width, -width, -width), fill);
  }
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(outline, width));
  painter.setBrush(fill);
  const auto half = width / 2;
  painter.drawRoundedRect(onGrid(painter, place).adjusted(half, half, -half, -half), radius - half, radius - half);
  painter.restore();
}

void horizontalRule(QPainter& painter, const QRectF& place, const QColor& color) {
  auto rule = onGrid(painter, place);
  rule.setHeight(hairlineWidth(scaleOf(painter)));
  painter.fillRect(rule, color);
}

void verticalRule(QPainter& painter, const QRectF& place, const QColor& color) {
  auto rule = onGrid(painter, place);
  rule.setWidth(hairlineWidth(scaleOf(painter)));
  painter.fillRect(rule, color);
}

}  // namespace Nimbrel::Painting
