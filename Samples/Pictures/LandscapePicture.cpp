#include "Samples/Controls.h"
#include "Samples/Pictures/Pictures.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainterPath>
#include <QPolygonF>
#include <QRadialGradient>
#include <QRandomGenerator>

#include <cmath>

namespace Nimbrel::Samples {

namespace {

/// A ridge of hills: slow waves with faster ones on them.
QPainterPath ridge(const QRectF& box, qreal height, qreal swing, qreal phase) {
  QPainterPath path(box.bottomLeft());
  for (qreal x = 0; x <= box.width(); x += 2) {
    const auto t = x / box.width();
    const auto wave = std::sin(t * 5.1 + phase) + 0.45 * std::sin(t * 13.7 + phase * 2.3) +
                      0.14 * std::sin(t * 41 + phase * 5.1) + 0.06 * std::sin(t * 97 + phase * 3.7);
    path.lineTo(box.left() + x, box.top() + height - wave * swing);
  }
  path.lineTo(box.bottomRight());
  path.closeSubpath();
  return path;
}

void drawSky(Canvas& canvas, const QRectF& photo) {
  QLinearGradient sky(photo.topLeft(), photo.bottomLeft());
  sky.setColorAt(0, QColor(0x33557f));
  sky.setColorAt(0.32, QColor(0x8fa9c4));
  sky.setColorAt(0.52, QColor(0xf3cfa0));
  sky.setColorAt(0.62, QColor(0xf0b389));
  canvas.fill(photo, sky);
  const QPointF sun(photo.left() + photo.width() * 0.68, photo.top() + photo.height() * 0.46);
  QRadialGradient glow(sun, photo.height() * 0.5);
  glow.setColorAt(0, QColor(255, 246, 214, 255));
  glow.setColorAt(0.09, QColor(255, 240, 200, 235));
  glow.setColorAt(0.12, QColor(255, 226, 170, 120));
  glow.setColorAt(1, QColor(255, 210, 150, 0));
  canvas.fill(photo, glow);
}

void drawHills(Canvas& canvas, const QRectF& photo) {
  auto& painter = canvas.painter();
  constexpr int count = 5;
  for (int layer = 0; layer < count; ++layer) {
    const qreal near = static_cast<qreal>(layer) / (count - 1);
    const auto color = QColor::fromRgbF(static_cast<float>(0.55 - 0.43 * near), static_cast<float>(0.58 - 0.36 * near),
                                        static_cast<float>(0.66 - 0.48 * near));
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPath(ridge(photo, photo.height() * (0.5 + 0.11 * layer), 30 + 9 * layer, 1.7 * layer + 0.6));
  }
}

/// The meadow that the trees stand on.
void drawForeground(Canvas& canvas, const QRectF& photo) {
  canvas.painter().setPen(Qt::NoPen);
  canvas.painter().setBrush(QColor(0x2b4634));
  canvas.painter().drawPath(ridge(photo, photo.height() * 0.88, 9, 2.2));
}

void drawTrees(Canvas& canvas, const QRectF& photo, QRandomGenerator& random) {
  auto& painter = canvas.painter();
  painter.setPen(Qt::NoPen);
  for (int tree = 0; tree < 130; ++tree) {
    const auto x = photo.left() + random.bounded(photo.width());
    const auto depth = random.bounded(1.0);
    const auto height = 26 + 62 * depth;
    const auto foot = photo.bottom() - photo.height() * (0.09 - 0.09 * depth) + 6;
    painter.setBrush(QColor::fromRgbF(0.07F, static_cast<float>(0.16 - 0.08 * depth), 0.10F));
    for (int tier = 0; tier < 3; ++tier) {
      const auto top = foot - height + tier * height * 0.24;
      const auto half = height * (0.13 + 0.06 * tier);
      const QPolygonF tierShape({{x, top}, {x - half, top + height * 0.46}, {x + half, top + height * 0.46}});
      painter.drawPolygon(tierShape);
    }
  }
}

/// The noise of a camera, without which a drawn sky compresses and thumbnails like no photograph does.
void drawGrain(Canvas& canvas, const QRectF& photo, QRandomGenerator& random) {
  QImage grain(photo.size().toSize(), QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < grain.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(grain.scanLine(y));
    for (int x = 0; x < grain.width(); ++x) {
      const int strength = static_cast<int>(random.bounded(9U));
      const bool lighter = random.bounded(2U) == 1;
      line[x] = lighter ? qRgba(strength, strength, strength, strength) : qRgba(0, 0, 0, strength);
    }
  }
  canvas.painter().drawImage(photo.topLeft(), grain);
}

}  // namespace

void drawLandscape(Canvas& canvas, const Occasion& /*occasion*/) {
  QRandomGenerator random(20417);
  const auto& theme = darkTheme();
  auto page = window(canvas, canvas.bounds(), u"valley-at-dusk.jpg - Picture Viewer", theme);
  page = statusBar(canvas, page, u"valley-at-dusk.jpg   18 of 238", u"4032 x 3024   5.1 MB   31%", theme);
  canvas.painter().setClipRect(page);
  drawSky(canvas, page);
  drawHills(canvas, page);
  drawForeground(canvas, page);
  drawTrees(canvas, page, random);
  canvas.painter().setClipping(false);
  drawGrain(canvas, page, random);
}

}  // namespace Nimbrel::Samples
