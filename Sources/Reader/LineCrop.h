#pragma once

#include "Reader/LineFinder.h"
#include "Reader/Plane.h"

#include <QImage>

namespace Nimbrel::Reader {

/// A line made ready for recognition: dark on white whatever its colours were, at the height that the models know best.
struct LineCrop {
  Plane grey;
  Box source;        ///< the part of the picture that it shows
  double scale = 1;  ///< pixels of `grey` for one of the picture
};

/// `limit` is what the crop must stay within: the picture, or the label that the line stands on.
[[nodiscard]] LineCrop cropOf(const QImage& picture, const Line& line, const Box& limit);

}  // namespace Nimbrel::Reader
