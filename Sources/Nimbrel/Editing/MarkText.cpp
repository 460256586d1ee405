#include "Editing/MarkText.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPen>

namespace Nimbrel::Flatten {

namespace {

/// In pixels; every other size is reached by scaling.
constexpr int designSize = 100;

QFont boldSystemFont() {
  auto font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
  font.setBold(true);
  font.setPixelSize(designSize);
  // A picture looks the same on every screen: nothing is moved to whole pixels, nothing coloured for one kind of panel.
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setStyleStrategy(QFont::NoSubpixelAntialias);
  return font;
}

/// Blanks for control characters. Where text is drawn a tab leads to the next stop, in a path it has no width, and the
/// outline of what follows would lie beside the letters; the others would be boxes.
QString visible(QString line) {
  for (auto& character : line) {
    if (character.category() == QChar::Other_Control) character = QLatin1Char(' ');
  }
  return line;
}

QPainterPath shape(const QString& line, const QFont& font) {
  QPainterPath path;
  path.addText(0, 0, font, line);
  return path;
}

}  // namespace

MarkText::MarkText(const QString& line, double size)
    : line_(visible(line)), font_(boldSystemFont()), scale_(size / designSize) {}

QRectF MarkText::ink() const {
  const auto box = shape(line_, font_).boundingRect();
  return {box.topLeft() * scale_, box.size() * scale_};
}

double MarkText::lineHeight() const { return QFontMetricsF(font_).height() * scale_; }

double MarkText::descent() const { return QFontMetricsF(font_).descent() * scale_; }

void MarkText::fill(QPainter& painter, QPointF origin, const QColor& colour) const {
  painter.save();
  painter.translate(origin);
  painter.scale(scale_, scale_);
  painter.setFont(font_);
  painter.setPen(colour);
  painter.drawText(QPointF(), line_);
  painter.restore();
}

void MarkText::outline(QPainter& painter, QPointF origin, const QColor& colour, double width) const {
  painter.save();
  painter.translate(origin);
  painter.scale(scale_, scale_);
  painter.strokePath(shape(line_, font_), QPen(colour, width * designSize, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.restore();
}

}  // namespace Nimbrel::Flatten
