#pragma once

#include <QImage>

#include <cstdio>

namespace Nimbrel::Images {

/// A PNG reduced while it is read, upright, in sRGB. Only one that is interlaced is held as a whole, within the limit.
/// Null when it cannot be read to its end.
[[nodiscard]] QImage decodePng(std::FILE* file, int longerSide);

}  // namespace Nimbrel::Images
