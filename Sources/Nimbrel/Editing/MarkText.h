#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QString>

namespace Nimbrel::Flatten {

/// One line in the bold system font, at a size in pixels that need not be whole; blanks stand for control characters.
/// Needs a QGuiApplication; any thread.
class MarkText {
 public:
  MarkText(const QString& line, double size);

  /// What the letters cover when the line begins at the origin, on its baseline.
  [[nodiscard]] QRectF ink() const;
  /// From the top of a line to the top of the next one, and from the baseline down to the lower edge.
  [[nodiscard]] double lineHeight() const;
  [[nodiscard]] double descent() const;

  /// Draws the line, which begins at this point of its baseline.
  void fill(QPainter& painter, QPointF origin, const QColor& colour) const;
  /// Draws the edges of the letters, in a stroke that is so many font sizes wide.
  void outline(QPainter& painter, QPointF origin, const QColor& colour, double width) const;

 private:
  QString line_;
  QFont font_;  ///< at a size of its own, since fonts know whole pixels only
  double scale_;
};

}  // namespace Nimbrel::Flatten
