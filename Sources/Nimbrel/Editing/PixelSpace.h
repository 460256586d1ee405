#pragma once

#include "Model/Annotation.h"

#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>

/// Where marks lie on a picture of a given size and how large they are there. Pure functions.
namespace Nimbrel::Flatten {

/// Whether the coordinates that the mark is drawn from are numbers. What is not is drawn nowhere.
[[nodiscard]] bool hasPlace(const Annotation& mark);

/// A point of 0 to 1 in pixels. A coordinate beyond a million times the picture's length, on either side, is taken for
/// that: sums and differences of pixels stay exact to a small part of one.
[[nodiscard]] QPointF inPixels(QPointF point, QSize picture);

/// The rectangle of a mark in pixels, however far it reaches beyond the picture.
[[nodiscard]] QRectF inPixels(const Annotation& mark, QSize picture);

/// All pixels of the picture that the rectangle touches, were it by a sliver. An edge within a millionth of a pixel of
/// a whole one counts as that: it is meant so, and the sum was rounded.
[[nodiscard]] QRect touchedPixels(const QRectF& rect, QSize picture);

/// The sizes of marks, in pixels. They follow the width of the picture alone.
struct MarkSizes {
  explicit MarkSizes(QSize picture);

  double lineWidth;
  double labelFont;
  double stepRadius;
  double stepFont;
  double blurRadius;  ///< the standard deviation

  /// How long the strokes of an arrow's head are; a very short arrow has a head larger than its shaft.
  [[nodiscard]] double arrowHead(double arrowLength) const;
};

}  // namespace Nimbrel::Flatten
