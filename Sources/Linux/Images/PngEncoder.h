#pragma once

#include <QImage>

#include <string>

namespace Nimbrel::Images {

/// The bytes of a PNG that holds the pixels of the picture, and that they are sRGB, and nothing else: no text, no time,
/// no name of a program, no colours under what is transparent. With alpha where something is transparent, else without.
/// Empty for a null picture and when the PNG cannot be made. May throw std::bad_alloc.
[[nodiscard]] std::string pngOf(const QImage& picture);

}  // namespace Nimbrel::Images
