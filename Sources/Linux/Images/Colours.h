#pragma once

#include <QByteArray>
#include <QColorSpace>
#include <QImage>

namespace Nimbrel::Images {

/// The picture with its colours in sRGB. A colour space that is not known, as that of an unreadable profile, leaves it.
[[nodiscard]] QImage inSrgb(QImage image, const QColorSpace& colours);
[[nodiscard]] QImage inSrgb(QImage image, const QByteArray& iccProfile);

}  // namespace Nimbrel::Images
