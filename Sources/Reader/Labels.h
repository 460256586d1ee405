#pragma once

#include "Reader/Components.h"

#include <QImage>

#include <vector>

namespace Nimbrel::Reader {

/// A button, tag, pill or field: a small area of one colour, with a text on it or without.
struct Label {
  Box box;  ///< what lies within its frame
  QRgb colour;
};

/// Those among the components whose inside is mostly of one colour, all along the frame too.
[[nodiscard]] std::vector<Label> labelsAmong(const std::vector<Component>& components, const QImage& picture);

}  // namespace Nimbrel::Reader
