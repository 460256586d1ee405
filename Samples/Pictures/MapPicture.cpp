#include "Samples/Controls.h"
#include "Samples/Pictures/Pictures.h"

#include <QPainterPath>

#include <utility>

namespace Nimbrel::Samples {

namespace {

const QColor land(0xf2efe6);
const QColor water(0xa9cfe0);
const QColor park(0xcfe3bf);
const QColor minor(0xffffff);
const QColor major(0xf7d88c);
const QColor roadEdge(0xc9c1b2);
const QColor ink(0x3b3f46);

void drawRoad(Canvas& canvas, const QPainterPath& path, const QColor& color, qreal width) {
  auto& painter = canvas.painter();
  painter.setBrush(Qt::NoBrush);
  for (const auto& [ground, broad] : {std::pair(roadEdge, width + 2), std::pair(color, width)}) {
    painter.setPen(QPen(ground, broad, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
  }
}

QPainterPath curve(QPointF from, QPointF by, QPointF to) {
  QPainterPath path(from);
  path.quadTo(by, to);
  return path;
}

void drawBlocks(Canvas& canvas) {
  for (int row = 0; row < 6; ++row) {
    for (int column = 0; column < 8; ++column) {
      const QRectF block(60 + column * 88, 250 + row * 62, 74, 48);
      canvas.panel(block, 3, QColor(0xe3ddcf));
    }
  }
}

void drawGround(Canvas& canvas) {
  const auto bounds = canvas.bounds();
  auto& painter = canvas.painter();
  canvas.fill(bounds, land);
  drawBlocks(canvas);
  painter.setPen(Qt::NoPen);
  painter.setBrush(park);
  painter.drawRoundedRect(QRectF(452, 300, 190, 116), 18, 18);
  QPainterPath sea(QPointF(0, 0));
  sea.lineTo(bounds.right(), 0);
  sea.lineTo(bounds.right(), 96);
  sea.cubicTo(560, 190, 380, 60, 250, 168);
  sea.cubicTo(180, 220, 90, 180, 0, 230);
  painter.setBrush(water);
  painter.drawPath(sea);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(water, 22));
  painter.drawPath(curve({250, 160}, {290, 330}, {210, bounds.bottom()}));
}

void drawRoads(Canvas& canvas) {
  const auto right = canvas.bounds().right();
  for (int row = 0; row < 5; ++row) {
    const auto y = 305 + row * 62.0;
    drawRoad(canvas, curve({0, y}, {380, y - 5}, {right, y - 1}), minor, 7);
  }
  for (int column = 0; column < 8; ++column) {
    const auto x = 141 + column * 88.0;
    // Up to the shore road, under which their ends disappear.
    drawRoad(canvas, curve({x, 252 - x * 0.11}, {x + 2, 400}, {x, 560}), minor, 7);
  }
  drawRoad(canvas, curve({0, 258}, {330, 196}, {right, 172}), major, 12);
  drawRoad(canvas, curve({405, 190}, {396, 380}, {408, 560}), major, 12);
}

void drawName(Canvas& canvas, QPointF center, QStringView name, const TextStyle& style, qreal angle = 0) {
  auto& painter = canvas.painter();
  painter.save();
  painter.translate(center);
  painter.rotate(angle);
  // A pale rim keeps a name legible across roads.
  for (const auto& shift : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1)}) {
    canvas.textIn({-150 + shift.x(), -10 + shift.y(), 300, 20}, name, style.in(QColor(255, 255, 255, 200)),
                  Qt::AlignCenter);
  }
  canvas.textIn({-150, -10, 300, 20}, name, style, Qt::AlignCenter);
  painter.restore();
}

void drawPin(Canvas& canvas, QPointF tip) {
  QPainterPath drop(tip);
  drop.cubicTo(tip + QPointF(-16, -20), tip + QPointF(-14, -38), tip + QPointF(0, -38));
  drop.cubicTo(tip + QPointF(14, -38), tip + QPointF(16, -20), tip);
  canvas.painter().setPen(QPen(Qt::white, 1.5));
  canvas.painter().setBrush(QColor(0xc5352b));
  canvas.painter().drawPath(drop);
  canvas.circle(tip - QPointF(0, 24), 5, Qt::white);
}

}  // namespace

void drawMap(Canvas& canvas, const Occasion& /*occasion*/) {
  const auto& theme = lightTheme();
  drawGround(canvas);
  drawRoads(canvas);
  const TextStyle street{.size = 12, .color = ink};
  drawName(canvas, {560, 60}, u"Dunmere Bay", {.size = 15, .color = QColor(0x2c6580), .face = Face::serif});
  drawName(canvas, {590, 185}, u"Harbor Square", street, -5);
  drawName(canvas, {320, 304}, u"Weaver Street", street);
  drawName(canvas, {622, 490}, u"Alder Lane", street);
  drawName(canvas, {88, 428}, u"Quarry Road", street);
  drawName(canvas, {547, 358}, u"Mill Park", {.size = 13, .color = QColor(0x3f6b31), .weight = Weight::bold});
  drawName(canvas, {122, 238}, u"Sluice Road", street, -9);
  drawPin(canvas, {290, 214});
  const QRectF card(14, 14, 270, 108);
  canvas.panel(card, 8, theme.page, theme.line);
  const QRectF row(card.left() + 14, card.top() + 10, card.width() - 28, 20);
  canvas.textIn(row, u"Old Tide Mill", {.size = 15, .color = theme.text, .weight = Weight::bold});
  canvas.textIn(row.translated(0, 22), u"3 Sluice Road, Dunmere, OR 97999", {.size = 12, .color = theme.text});
  canvas.textIn(row.translated(0, 42), u"Open today until 5:00 PM", {.size = 12, .color = theme.success});
  canvas.textIn(row.translated(0, 64), u"12 min on foot, 0.6 miles", {.size = 12, .color = theme.muted});
  canvas.fill({640, 532, 80, 3}, ink);
  canvas.textIn({640, 510, 80, 20}, u"500 ft", {.size = 11, .color = ink}, Qt::AlignCenter);
}

}  // namespace Nimbrel::Samples
