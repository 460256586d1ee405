#pragma once

#include "Platform/ImageFile.h"

#include <QImage>

#include <cstdio>

/// The kinds that are left to the image plugins of Qt: TIFF and WebP, and the pictures of a GIF.
namespace Nimbrel::Images {

[[nodiscard]] ImageFile::PixelSize qtSize(std::FILE* file);

/// The first picture of the file, reduced, upright, in sRGB. Null when it cannot be read or would take too much memory.
[[nodiscard]] QImage decodeWithQt(std::FILE* file, int longerSide);

/// Whether the first frame of a GIF is there to its last byte. The plugin passes a frame that is cut short for whole.
[[nodiscard]] bool hasWholeGifFrame(std::FILE* file);

}  // namespace Nimbrel::Images
