#pragma once

#include "Reader/Components.h"

#include <vector>

namespace Nimbrel::Reader {

inline constexpr int leastLetterHeight = 4;

/// Components by what they may be, each kind ordered by its left edge.
struct Letters {
  std::vector<Component> letters;
  std::vector<Component> specks;  ///< dots, dashes, quotes: they belong to a line but do not make one
  std::vector<Component> others;  ///< what no text looks like: pictures, frames, lines, what holds others
};

[[nodiscard]] Letters lettersAmong(std::vector<Component> components);

}  // namespace Nimbrel::Reader
