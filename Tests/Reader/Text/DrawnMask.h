#pragma once

#include "Reader/Plane.h"

#include <string_view>
#include <vector>

namespace Nimbrel::Testing {

/// A mask of rows of text in which everything but a blank is marked.
inline Reader::Plane drawnMask(const std::vector<std::string_view>& rows) {
  Reader::Plane mask(static_cast<int>(rows.front().size()), static_cast<int>(rows.size()));
  for (int y = 0; y < mask.height(); ++y) {
    for (int x = 0; x < mask.width(); ++x) {
      mask.row(y)[x] = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] == ' ' ? 0 : 3;
    }
  }
  return mask;
}

}  // namespace Nimbrel::Testing
