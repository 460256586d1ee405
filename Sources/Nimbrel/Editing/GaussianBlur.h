#pragma once

#include <QImage>
#include <QRect>

namespace Nimbrel {

/// A part of the picture as it looks after the whole of it was blurred with a Gaussian of this standard deviation, at
/// least 1; behind its edges the picture goes on in the colours of the edge. The picture is of one of the formats of
/// ImageFile and the part lies in it; the result has that format and the size of the part.
///
/// Three box filters in a row stand for the Gaussian, their widths chosen after P. Kovesi, "Fast Almost-Gaussian
/// Filtering" (DICTA 2010). The time does not grow with the deviation, but for the surroundings of the part that are
/// looked at: three times the deviation on each side. A deviation above 16,000, or above four times the picture's
/// length along an axis, is taken for that along this axis. May throw std::bad_alloc; any thread.
[[nodiscard]] QImage gaussianBlurred(const QImage& picture, const QRect& part, double deviation);

}  // namespace Nimbrel
