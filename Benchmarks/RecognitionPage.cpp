#include "RecognitionPage.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace Nimbrel::Benchmarks {

namespace {

constexpr int stripes = 3;  ///< of a panel's pixel, from left to right red, green and blue

QSize pictureSize(QSize size, const Look& look) {
  const QSize scaled(qRound(size.width() * look.scale), qRound(size.height() * look.scale));
  return look.subpixels ? QSize(scaled.width() * stripes, scaled.height()) : scaled;
}

/// The mean of five stripes around one, which keeps the fringes of colour bearable.
int stripe(const QRgb* row, int width, int at, int (*channel)(QRgb)) {
  int sum = 0;
  for (int i = at - 2; i <= at + 2; ++i) sum += channel(row[std::clamp(i, 0, width - 1)]);
  return (sum + 2) / 5;
}

/// A picture of one column for each stripe as a panel shows it.
QImage fromStripes(const QImage& wide) {
  QImage result(wide.width() / stripes, wide.height(), QImage::Format_RGB32);
  for (int y = 0; y < wide.height(); ++y) {
    const auto* source = reinterpret_cast<const QRgb*>(wide.constScanLine(y));
    auto* target = reinterpret_cast<QRgb*>(result.scanLine(y));
    for (int x = 0; x < result.width(); ++x) {
      const int at = x * stripes;
      target[x] = qRgb(stripe(source, wide.width(), at, qRed), stripe(source, wide.width(), at + 1, qGreen),
                       stripe(source, wide.width(), at + 2, qBlue));
    }
  }
  return result;
}

}  // namespace

Canvas::Canvas(QSize size, const Look& look)
    : size_(size), look_(look), image_(pictureSize(size, look), QImage::Format_RGB32), painter_(&image_) {
  image_.fill(paper());
  painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  painter_.scale(look.scale * (look.subpixels ? stripes : 1), look.scale);
}

QFont Canvas::fontOf(const Type& type) const {
  QFont font(type.fixed ? look_.fixedFamily : look_.family);
  font.setPixelSize(type.pixels);
  font.setBold(type.bold);
  font.setItalic(type.italic);
  font.setHintingPreference(look_.seed % 2 == 0 ? QFont::PreferFullHinting : QFont::PreferNoHinting);
  return font;
}

double Canvas::widthOf(const QString& text, const Type& type) const {
  return QFontMetricsF(fontOf(type)).horizontalAdvance(text);
}

double Canvas::text(double x, double baseline, const QString& text, const Type& type) {
  painter_.setFont(fontOf(type));
  painter_.setPen(type.colour);
  painter_.drawText(QPointF(x, baseline), text);
  lines_.push_back({text.trimmed(), type.pixels * look_.scale});
  return x + widthOf(text, type);
}

void Canvas::textRight(double right, double baseline, const QString& words, const Type& type) {
  text(std::floor(right - widthOf(words, type)), baseline, words, type);
}

void Canvas::textCentred(double centre, double baseline, const QString& words, const Type& type) {
  text(std::floor(centre - widthOf(words, type) / 2), baseline, words, type);
}

void Canvas::box(const QRectF& place, const QColor& fill, const QColor& edge, double radius) {
  painter_.setBrush(fill);
  painter_.setPen(edge.alpha() == 0 ? QPen(Qt::NoPen) : QPen(edge, 1));
  const auto exact = edge.alpha() == 0 ? place : place.adjusted(0.5, 0.5, -0.5, -0.5);
  painter_.drawRoundedRect(exact, radius, radius);
}

void Canvas::rule(double x1, double y1, double x2, double y2, const QColor& colour) {
  painter_.fillRect(QRectF(x1, y1, std::max(1.0, x2 - x1), std::max(1.0, y2 - y1)), colour);
}

void Canvas::pill(const QRectF& place, const QString& words, const QColor& fill, const Type& type, double radius) {
  box(place, fill, Qt::transparent, radius);
  textCentred(place.center().x(), std::floor(place.center().y() + type.pixels * 0.36), words, type);
}

void Canvas::disc(double x, double y, double radius, const QColor& fill) {
  painter_.setBrush(fill);
  painter_.setPen(Qt::NoPen);
  painter_.drawEllipse(QPointF(x, y), radius, radius);
}

Page Canvas::finished(const QString& name) {
  painter_.end();
  return {name, look_.subpixels ? fromStripes(image_) : image_, std::move(lines_)};
}

}  // namespace Nimbrel::Benchmarks
