#pragma once

#include <QImage>

#include <cstdio>

namespace Nimbrel::Images {

/// A JPEG reduced while it is read, decoded no larger than needed, upright, in sRGB. One in several scans is held by
/// libjpeg as a whole, within the limit. Null when it cannot be read to its end or data are missing in between.
[[nodiscard]] QImage decodeJpeg(std::FILE* file, int longerSide);

}  // namespace Nimbrel::Images
