#pragma once

#include <QImage>

#include <cstdint>
#include <span>

namespace Nimbrel::Images {

/// The orientation that EXIF data name, 1 to 8; 1 when they name none. The data begin with their byte order mark.
[[nodiscard]] int exifOrientation(std::span<const std::uint8_t> exif);

/// The picture turned and mirrored so that it is upright.
[[nodiscard]] QImage upright(const QImage& image, int orientation);

}  // namespace Nimbrel::Images
