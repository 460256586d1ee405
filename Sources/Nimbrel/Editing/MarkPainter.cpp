#include "Editing/MarkPainter.h"

#include "Editing/MarkText.h"
#include "Editing/PixelSpace.h"
#include "Editing/Segment.h"

#include <QColor>
#include <QLineF>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPointF>
#include <QRectF>
#include <QRegularExpression>
#include <QSize>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

namespace Nimbrel::Flatten {

namespace {

using Kind = Annotation::Kind;

/// Qt promises nothing of what is painted beyond coordinates of 32767, and beyond 8,388,607 nothing appears; larger
/// pictures are painted in tiles.
constexpr int tileLength = 16'384;
constexpr double redactionOverhang = 2;
constexpr float highlightAlpha = 0.28F;
constexpr double headAngle = 0.82 * std::numbers::pi;
constexpr float outlineAlpha = 0.35F;
constexpr double outlineWidth = 0.015;
/// The font is a 45th of the picture's width or more, so that the letters behind these lie outside, and to set them
/// would take time for nothing.
constexpr qsizetype longestLine = 4096;

/// Paints one tile of a picture.
class TilePainter {
 public:
  TilePainter(QImage& tile, QPoint origin, QSize picture)
      : picture_(picture), sizes_(picture), tile_(QRectF(origin, tile.size())), painter_(&tile) {
    const double margin = 12 * sizes_.lineWidth;
    near_ = tile_.adjusted(-margin, -margin, margin, margin);
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.translate(-origin);
  }

  void paint(const Annotation& mark) {
    if (!hasPlace(mark)) return;
    const auto& ink = InkColor::at(mark.colorIndex).renderingColor;
    switch (mark.kind) {
      case Kind::redact:
        return paintRedaction(inPixels(mark, picture_));
      case Kind::box:
        return paintBox(inPixels(mark, picture_), ink);
      case Kind::highlight:
        return paintHighlight(inPixels(mark, picture_), ink);
      case Kind::arrow:
        return paintArrow({inPixels(mark.start, picture_), inPixels(mark.end, picture_)}, ink);
      case Kind::step:
        return paintStep(inPixels(mark.start, picture_), mark.number, ink);
      case Kind::label:
        return paintLabel(inPixels(mark.start, picture_), mark.text, ink);
      case Kind::blur:
      case Kind::crop:
        return;
    }
  }

 private:
  /// Of whole pixels, so that nothing shines through at an edge.
  void paintRedaction(const QRectF& rect) {
    const auto grown = rect.adjusted(-redactionOverhang, -redactionOverhang, redactionOverhang, redactionOverhang);
    painter_.fillRect(touchedPixels(grown, picture_) & tile_.toRect(), Qt::black);
  }

  void paintBox(const QRectF& rect, const QColor& ink) {
    painter_.setPen(QPen(ink, sizes_.lineWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(broughtNear(rect));
  }

  void paintHighlight(const QRectF& rect, QColor ink) {
    ink.setAlphaF(highlightAlpha);
    painter_.fillRect(broughtNear(rect), ink);
  }

  void paintArrow(const QLineF& shaft, const QColor& ink) {
    QPainterPath path;
    if (const auto visible = clipped(shaft, near_)) {
      path.moveTo(visible->p1());
      path.lineTo(visible->p2());
    }
    if (near_.contains(shaft.p2())) addHead(path, shaft);
    painter_.strokePath(path, QPen(ink, sizes_.lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  }

  void addHead(QPainterPath& path, const QLineF& shaft) const {
    const double direction = std::atan2(shaft.dy(), shaft.dx());
    const double side = sizes_.arrowHead(shaft.length());
    for (const double angle : {direction - headAngle, direction + headAngle}) {
      path.moveTo(shaft.p2());
      path.lineTo(shaft.p2() + side * QPointF(std::cos(angle), std::sin(angle)));
    }
  }

  void paintStep(QPointF centre, int number, const QColor& ink) {
    const double reach = sizes_.stepRadius;
    const MarkText text(QString::number(number), sizes_.stepFont);
    const auto covered = text.ink().translated(-text.ink().center());
    const QRectF circle(centre.x() - reach, centre.y() - reach, 2 * reach, 2 * reach);
    if (!near_.intersects(circle | covered.translated(centre))) return;
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(ink);
    painter_.drawEllipse(circle);
    // The digits lie in the middle, whatever room the font keeps above and below its letters.
    text.fill(painter_, centre - text.ink().center(), Qt::white);
  }

  /// Further lines go downward, so that the anchor is the top left of the label however many it has.
  void paintLabel(QPointF corner, const std::string& text, const QColor& ink) {
    if (corner.x() > near_.right()) return;
    static const QRegularExpression lineEnd(QStringLiteral("\r\n|[\n\r\u2028\u2029]"));
    const auto lines = QString::fromStdString(text).split(lineEnd);
    const MarkText metrics({}, sizes_.labelFont);
    const double height = metrics.lineHeight();
    double baseline = corner.y() + sizes_.labelFont - metrics.descent();
    for (const auto& line : lines) {
      if (baseline - height > near_.bottom()) return;
      const bool isAbove = baseline + height < near_.top();
      if (!isAbove) paintLine({corner.x(), baseline}, line, ink);
      baseline += height;
    }
  }

  void paintLine(QPointF origin, const QString& line, const QColor& ink) {
    const MarkText text(line.left(longestLine), sizes_.labelFont);
    text.fill(painter_, origin, ink);
    text.outline(painter_, origin, QColor::fromRgbF(0, 0, 0, outlineAlpha), outlineWidth);
  }

  /// The same to look at, with no coordinate that is too large for a painter: edges far outside of the tile are moved
  /// to where they are just out of sight.
  [[nodiscard]] QRectF broughtNear(const QRectF& rect) const {
    const auto x = [&](double edge) { return std::clamp(edge, near_.left(), near_.right()); };
    const auto y = [&](double edge) { return std::clamp(edge, near_.top(), near_.bottom()); };
    return {QPointF(x(rect.left()), y(rect.top())), QPointF(x(rect.right()), y(rect.bottom()))};
  }

  QSize picture_;
  MarkSizes sizes_;
  QRectF tile_;
  QRectF near_;  ///< the tile, and around it what may reach into it with a stroke
  QPainter painter_;
};

}  // namespace

void paintMarks(QImage& picture, std::span<const Annotation> marks) {
  for (int y = 0; y < picture.height(); y += tileLength) {
    for (int x = 0; x < picture.width(); x += tileLength) {
      const auto size = QSize(tileLength, tileLength).boundedTo(picture.size() - QSize(x, y));
      QImage tile(picture.scanLine(y) + qsizetype{x} * 4, size.width(), size.height(), picture.bytesPerLine(),
                  picture.format());
      TilePainter painter(tile, {x, y}, picture.size());
      for (const auto& mark : marks) painter.paint(mark);
    }
  }
}

}  // namespace Nimbrel::Flatten
