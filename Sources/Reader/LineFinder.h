#pragma once

#include "Reader/Box.h"
#include "Reader/Components.h"

#include <vector>

namespace Nimbrel::Reader {

/// What stands on one visual line without a wide gap.
struct Line {
  Box box;                 ///< around all of it
  int ascender = 0;        ///< where its tall letters begin
  int baseline = 0;        ///< where most of its letters stand
  std::vector<Box> parts;  ///< its letters, ordered by their left edges; letters that touch are one part

  /// Of its capital letters, about.
  [[nodiscard]] int height() const { return baseline - ascender; }
};

/// Puts what may be letters together to lines. The order of the lines is that of their left edges.
[[nodiscard]] std::vector<Line> linesOf(const std::vector<Component>& components);

}  // namespace Nimbrel::Reader
