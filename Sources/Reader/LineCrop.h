#pragma once

#include "Reader/LineFinder.h"
#include "Reader/Plane.h"

#include <QImage>

namespace Nimbrel::Reader {

/// A line made ready for recognition: dark on white whatever its colours were, at the height that the models know best.
struct LineCrop {
  Plane grey;
  double left = 0;   ///< where its left edge is in the picture
  double scale = 1;  ///< pixels of `grey` for one of the picture

  [[nodiscard]] double inPicture(double x) const { return left + x / scale; }
};

/// `limit` is what the crop must stay within: the picture, or the label that the line stands on.
[[nodiscard]] LineCrop cropOf(const QImage& picture, const Line& line, const Box& limit);

}  // namespace Nimbrel::Reader
