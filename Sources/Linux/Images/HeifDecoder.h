#pragma once

#include "Platform/ImageFile.h"

#include <QImage>

#include <string>

namespace Nimbrel::Images {

/// The stored size of the primary image; 0 when the file is not of this kind.
[[nodiscard]] ImageFile::PixelSize heifSize(const std::string& path);

/// The primary image, reduced, in sRGB, with the transformations that the file asks for. Null when it cannot be read.
[[nodiscard]] QImage decodeHeif(const std::string& path, int longerSide);

}  // namespace Nimbrel::Images
