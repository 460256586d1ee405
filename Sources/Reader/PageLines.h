#pragma once

#include "Reader/LineFinder.h"

#include <QImage>
#include <QRect>

#include <vector>

namespace Nimbrel::Reader {

/// A line and what its surroundings are: the picture, or the button that it stands on.
struct PageLine {
  Line line;
  Box limit;
};

/// The lines of a picture in RGB32, in no particular order but always the same; none within the `blanked` boxes.
[[nodiscard]] std::vector<PageLine> linesOnPage(const QImage& picture, const std::vector<QRect>& blanked);

}  // namespace Nimbrel::Reader
