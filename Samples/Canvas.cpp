#include "Samples/Canvas.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

namespace {

constexpr qreal metersPerInch = 0.0254;
constexpr qreal pointsPerInch = 72;

QString family(Face face) {
  switch (face) {
    case Face::sans:
      return u"DejaVu Sans"_s;
    case Face::mono:
      return u"DejaVu Sans Mono"_s;
    case Face::serif:
      return u"DejaVu Serif"_s;
  }
  return {};
}

/// Everything that the desktop's font settings could decide is decided here, so that pictures are the same everywhere.
QFont fontFor(const TextStyle& style) {
  QFont font(family(style.face));
  font.setPixelSize(style.size);
  font.setBold(style.weight == Weight::bold);
  font.setHintingPreference(QFont::PreferVerticalHinting);
  font.setStyleStrategy(
      static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias | QFont::NoFontMerging));
  return font;
}

QStringList wrapped(qreal limit, QStringView text, const TextStyle& style) {
  const QFontMetricsF metrics(fontFor(style));
  QStringList lines;
  for (const auto part : text.split(u'\n')) {
    QString line;
    for (const auto word : part.split(u' ')) {
      const QString longer = line.isEmpty() ? word.toString() : line + u' ' + word.toString();
      if (!line.isEmpty() && metrics.horizontalAdvance(longer) > limit) {
        lines.append(line);
        line = word.toString();
      } else {
        line = longer;
      }
    }
    lines.append(line);
  }
  return lines;
}

}  // namespace

bool fontsAreInstalled() {
  const auto families = QFontDatabase::families();
  constexpr std::array faces{Face::sans, Face::mono, Face::serif};
  return std::ranges::all_of(faces, [&families](Face face) { return families.contains(family(face)); });
}

Canvas::Canvas(QSize size, int scale)
    : bounds_(QPointF(0, 0), size), image_(size * scale, QImage::Format_RGB32), painter_() {
  image_.setDevicePixelRatio(scale);
  const int dotsPerMeter = static_cast<int>(std::lround(scale * pointsPerInch / metersPerInch));
  image_.setDotsPerMeterX(dotsPerMeter);
  image_.setDotsPerMeterY(dotsPerMeter);
  image_.fill(Qt::white);
  painter_.begin(&image_);
  painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
}

void Canvas::fill(const QRectF& box, const QBrush& brush) { painter_.fillRect(box, brush); }

void Canvas::circle(QPointF center, qreal radius, const QColor& color) {
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(color);
  painter_.drawEllipse(center, radius, radius);
}

void Canvas::panel(const QRectF& box, qreal radius, const QBrush& inside, const QColor& border) {
  const bool bordered = border.alpha() > 0;
  const auto frame = bordered ? box.adjusted(0.5, 0.5, -0.5, -0.5) : box;
  painter_.setPen(bordered ? QPen(border, 1) : QPen(Qt::NoPen));
  painter_.setBrush(inside);
  painter_.drawRoundedRect(frame, radius, radius);
}

void Canvas::horizontal(qreal left, qreal right, qreal y, const QColor& color) {
  painter_.fillRect(QRectF(left, std::floor(y), right - left, 1), color);
}

void Canvas::vertical(qreal x, qreal top, qreal bottom, const QColor& color) {
  painter_.fillRect(QRectF(std::floor(x), top, 1, bottom - top), color);
}

void Canvas::line(QPointF from, QPointF to, const QColor& color, qreal width) {
  painter_.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter_.drawLine(from, to);
}

qreal Canvas::text(qreal x, qreal baseline, QStringView text, const TextStyle& style) {
  const auto font = fontFor(style);
  painter_.setFont(font);
  painter_.setPen(style.color);
  painter_.drawText(QPointF(x, baseline), text.toString());
  return x + QFontMetricsF(font).horizontalAdvance(text.toString());
}

void Canvas::textIn(const QRectF& box, QStringView text, const TextStyle& style, Qt::Alignment alignment) {
  const auto font = fontFor(style);
  const QFontMetricsF metrics(font);
  const auto shown = metrics.elidedText(text.toString(), Qt::ElideRight, box.width() + 1);
  const auto width = metrics.horizontalAdvance(shown);
  auto x = box.left();
  if (alignment.testFlag(Qt::AlignRight)) x = box.right() - width;
  if (alignment.testFlag(Qt::AlignHCenter)) x = box.center().x() - width / 2;
  const auto baseline = box.center().y() + (metrics.ascent() - metrics.descent()) / 2;
  painter_.setFont(font);
  painter_.setPen(style.color);
  // Whole positions keep the stems of equal letters equally sharp.
  painter_.drawText(QPointF(std::round(x), std::round(baseline)), shown);
}

qreal Canvas::paragraph(const QRectF& box, QStringView text, const TextStyle& style, qreal lineHeight) {
  auto y = box.top();
  for (const auto& line : wrapped(box.width(), text, style)) {
    textIn({box.left(), y, box.width(), lineHeight}, line, style);
    y += lineHeight;
  }
  return y;
}

qreal Canvas::paragraphHeight(qreal width, QStringView text, const TextStyle& style, qreal lineHeight) const {
  return static_cast<qreal>(wrapped(width, text, style).size()) * lineHeight;
}

qreal Canvas::width(QStringView text, const TextStyle& style) const {
  return QFontMetricsF(fontFor(style)).horizontalAdvance(text.toString());
}

qreal Canvas::paragraphWidth(qreal limit, QStringView text, const TextStyle& style) const {
  qreal widest = 0;
  for (const auto& line : wrapped(limit, text, style)) widest = std::max(widest, width(line, style));
  return widest;
}

QImage Canvas::finish() {
  painter_.end();
  return image_;
}

}  // namespace Nimbrel::Samples
