#pragma once

#include "Model/Annotation.h"

#include <QImage>

#include <span>
#include <string>

/// Burns marks into a copy of a picture. No state; any thread. Text needs a QGuiApplication, of any platform.
namespace Nimbrel::Flatten {

/// The picture at its full size, with its orientation applied, and the marks on it, later ones over earlier ones;
/// blurring comes first, from the untouched picture, and the last crop last. Nothing but pixels is taken from the file.
/// Null when the picture cannot be read, when its pixels take more than 256 MB at four bytes each, which is the most
/// that ImageFile::picture holds, and when there is no memory to cover something; a crop that finds none is left out.
/// Without marks a plain copy.
[[nodiscard]] QImage render(const std::string& url, std::span<const Annotation> items);

}  // namespace Nimbrel::Flatten
