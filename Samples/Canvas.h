#pragma once

#include <QBrush>
#include <QColor>
#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QSize>
#include <QStringView>

namespace Nimbrel::Samples {

enum class Face { sans, mono, serif };
enum class Weight { regular, bold };

struct TextStyle {
  int size = 13;
  QColor color = Qt::black;
  Face face = Face::sans;
  Weight weight = Weight::regular;

  /// The same type in another colour.
  [[nodiscard]] TextStyle in(const QColor& other) const { return {size, other, face, weight}; }
};

/// Whether the fonts that pictures are set in are there; without them every picture would look like the machine it was
/// made on.
[[nodiscard]] bool fontsAreInstalled();

/// The surface that one picture is drawn on. Lengths are in points; a picture of scale 2 has two pixels for each.
class Canvas {
 public:
  Canvas(QSize size, int scale);
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  [[nodiscard]] QRectF bounds() const { return bounds_; }

  /// For what the helpers below have no word for.
  [[nodiscard]] QPainter& painter() { return painter_; }

  void fill(const QRectF& box, const QBrush& brush);
  void circle(QPointF center, qreal radius, const QColor& color);

  /// A rounded rectangle, with a line around it when `border` is given.
  void panel(const QRectF& box, qreal radius, const QBrush& inside, const QColor& border = Qt::transparent);

  /// Lines one point thick that fall on whole pixels.
  void horizontal(qreal left, qreal right, qreal y, const QColor& color);
  void vertical(qreal x, qreal top, qreal bottom, const QColor& color);

  /// A line in any direction.
  void line(QPointF from, QPointF to, const QColor& color, qreal width = 1);

  /// Sets the text with its baseline at `baseline`; returns where it ends.
  qreal text(qreal x, qreal baseline, QStringView text, const TextStyle& style);

  /// Sets one line into the box, cut with an ellipsis where it is too long.
  void textIn(const QRectF& box, QStringView text, const TextStyle& style,
              Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter);

  /// Sets words into lines from the top of the box, as many as it takes; returns where the next line would begin.
  qreal paragraph(const QRectF& box, QStringView text, const TextStyle& style, qreal lineHeight);

  /// How tall paragraph() would come out.
  [[nodiscard]] qreal paragraphHeight(qreal width, QStringView text, const TextStyle& style, qreal lineHeight) const;

  /// The width of the text, and of the longest line that paragraph() would set within `limit`.
  [[nodiscard]] qreal width(QStringView text, const TextStyle& style) const;
  [[nodiscard]] qreal paragraphWidth(qreal limit, QStringView text, const TextStyle& style) const;

  /// The finished picture. Nothing can be drawn afterwards.
  [[nodiscard]] QImage finish();

 private:
  QRectF bounds_;
  QImage image_;
  QPainter painter_;
};

}  // namespace Nimbrel::Samples
