#include "Screencapture/OverlayPicture.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace Nimbrel::Screencapture {

namespace {

const QColor veil(0, 0, 0, 115);
const QColor softOutline(0, 0, 0, 90);
const QColor labelGround(22, 22, 24, 235);
const QColor labelEdge(255, 255, 255, 46);

// At a scale of 1
constexpr int typeSize = 13;
constexpr int labelMargin = 9;
constexpr int labelHeight = 24;
constexpr int labelGap = 8;

int scaled(int length, double scale) { return static_cast<int>(std::lround(length * scale)); }

QString sizeText(QSize size) {
  return QStringLiteral("%1 × %2").arg(QString::number(size.width()), QString::number(size.height()));
}

QFont labelFont(double scale) {
  QFont font;
  font.setPixelSize(scaled(typeSize, scale));
  font.setWeight(QFont::Medium);
  return font;
}

QSize labelSize(QSize size, double scale) {
  // As wide as its digits could be, so that it does not tremble while they change.
  auto text = sizeText(size);
  std::ranges::replace_if(
      text, [](QChar character) { return character.isDigit(); }, QLatin1Char('0'));
  const int width = QFontMetrics(labelFont(scale)).horizontalAdvance(text);
  return {width + 2 * scaled(labelMargin, scale), scaled(labelHeight, scale)};
}

/// The white line: around the area, and within it where the monitor ends.
QRect lineAround(const OverlayScene& scene) {
  return scene.area.adjusted(-1, -1, 1, 1) & scene.monitor.united(scene.area);
}

/// The four sides of a rectangle, one pixel wide.
QRegion sides(const QRect& rectangle) { return QRegion(rectangle) - rectangle.adjusted(1, 1, -1, -1); }

/// The white line with its outlines.
QRegion border(const OverlayScene& scene) {
  if (scene.area.isEmpty()) return {};
  const auto line = lineAround(scene);
  return QRegion(line.adjusted(-1, -1, 1, 1)) - line.adjusted(2, 2, -2, -2);
}

void fill(QPainter& painter, const QRegion& region, const QColor& colour) {
  for (const auto& part : region) painter.fillRect(part, colour);
}

void paintLabel(QPainter& painter, const OverlayScene& scene) {
  painter.setRenderHint(QPainter::Antialiasing);
  const auto pill = QRectF(scene.label).adjusted(0.5, 0.5, -0.5, -0.5);
  painter.setPen(QPen(labelEdge, 1));
  painter.setBrush(labelGround);
  painter.drawRoundedRect(pill, pill.height() / 2, pill.height() / 2);
  painter.setPen(Qt::white);
  painter.setFont(labelFont(scene.labelScale));
  painter.drawText(scene.label, Qt::AlignCenter | Qt::TextSingleLine, sizeText(scene.size));
}

}  // namespace

OverlayScene overlayScene(const QRect& area, const QRect& monitor, double scale, std::optional<QSize> size) {
  OverlayScene scene{.area = area, .size = size.value_or(area.size()), .monitor = monitor, .labelScale = scale};
  if (!area.isEmpty()) scene.label = labelPlace(area, labelSize(scene.size, scale), monitor, scaled(labelGap, scale));
  return scene;
}

QRect labelPlace(const QRect& area, QSize label, const QRect& monitor, int gap) {
  const auto right = monitor.x() + monitor.width() - label.width();
  const int x = std::max(monitor.x(), std::min(area.x() + area.width() - label.width(), right));
  const int below = area.y() + area.height() + gap;
  const int above = area.y() - gap - label.height();
  const int end = monitor.y() + monitor.height();
  if (below + label.height() <= end) return {QPoint(x, below), label};
  if (above >= monitor.y()) return {QPoint(x, above), label};
  const int bottom = std::min(area.y() + area.height(), end);
  return {QPoint(std::max(monitor.x(), std::min(x, right - gap)), std::max(monitor.y(), bottom - gap - label.height())),
          label};
}

QRegion changesBetween(const OverlayScene& before, const OverlayScene& after) {
  if (before == after) return {};
  auto changes = QRegion(before.area).xored(after.area) + border(before) + border(after);
  return changes + before.label + after.label;
}

void paintOverlay(QImage& canvas, const QImage& frozen, const OverlayScene& scene, const QRegion& parts) {
  QPainter painter(&canvas);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  for (const auto& part : parts) painter.drawImage(part.topLeft(), frozen, part);
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  fill(painter, parts - scene.area, veil);
  if (scene.area.isEmpty()) return;
  const auto line = lineAround(scene);
  fill(painter, (border(scene) - sides(line)) & parts, softOutline);
  fill(painter, sides(line) & parts, Qt::white);
  painter.setClipRegion(parts);
  if (parts.intersects(scene.label)) paintLabel(painter, scene);
}

}  // namespace Nimbrel::Screencapture
