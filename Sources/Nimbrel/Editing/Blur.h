#pragma once

#include "Model/Annotation.h"

#include <QImage>

#include <span>

namespace Nimbrel::Flatten {

/// A copy of the source in which the places of the marks, sharp-edged, show it blurred; where they overlap it is
/// blurred once all the same. A pixel that a mark covers in part is blurred as a whole. Null without marks. May throw
/// std::bad_alloc.
[[nodiscard]] QImage blurred(const QImage& source, std::span<const Annotation> marks);

}  // namespace Nimbrel::Flatten
