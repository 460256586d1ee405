#pragma once

#include "Platform/ImageFile.h"

#include <cstdio>

/// Sizes in pixels out of the first bytes of a file, by a few reads and no decoder. What is not there is 0.
namespace Nimbrel::Images {

[[nodiscard]] ImageFile::PixelSize pngSize(std::FILE* file);

/// Walks over the segments to the frame header.
[[nodiscard]] ImageFile::PixelSize jpegSize(std::FILE* file);

/// The size of the screen that the frames are drawn on.
[[nodiscard]] ImageFile::PixelSize gifSize(std::FILE* file);

}  // namespace Nimbrel::Images
