#pragma once

#include "Model/Annotation.h"

#include <QImage>

#include <span>

namespace Nimbrel::Flatten {

/// A copy of the source in which the places of the marks, sharp-edged, show it blurred; where they overlap it is
/// blurred once all the same. A pixel that a mark covers in part is blurred as a whole. The source is of one of the
/// formats of ImageFile, and so is the copy. Null without marks. May throw std::bad_alloc; any thread.
[[nodiscard]] QImage blurred(const QImage& source, std::span<const Annotation> marks);

}  // namespace Nimbrel::Flatten
