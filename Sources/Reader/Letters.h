#pragma once

#include "Reader/Components.h"

#include <vector>

namespace Nimbrel::Reader {

inline constexpr int leastLetterHeight = 4;

/// The components that text may consist of, each kind ordered by its left edge.
struct Letters {
  std::vector<Component> letters;
  std::vector<Component> specks;  ///< dots, dashes, quotes: they belong to a line but do not make one
};

/// Leaves out what no text looks like: pictures, frames, lines, what holds others.
[[nodiscard]] Letters lettersAmong(const std::vector<Component>& components);

}  // namespace Nimbrel::Reader
