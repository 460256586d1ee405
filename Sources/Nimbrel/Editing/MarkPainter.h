#pragma once

#include "Model/Annotation.h"

#include <QImage>

#include <span>

namespace Nimbrel::Flatten {

/// Draws the marks onto the picture, of one of the formats of ImageFile, in their order; those that blur or crop draw
/// nothing. What lies outside is cut off, a mark whose coordinates are no numbers is left out. Any thread; steps and
/// labels need a QGuiApplication.
void paintMarks(QImage& picture, std::span<const Annotation> marks);

}  // namespace Nimbrel::Flatten
