#pragma once

#include "Reader/Box.h"
#include "Reader/Components.h"

#include <vector>

namespace Nimbrel::Reader {

inline constexpr int leastLetterHeight = 4;
inline constexpr int tallestLetter = 110;  ///< what is taller is a picture

/// Whether a box is no wider than a letter of its height is, an M or a W among them.
[[nodiscard]] inline bool mayBeOneLetter(const Box& box) { return box.width() * 10 < box.height() * 13; }

/// Components by what they may be, each kind ordered by its left edge.
struct Letters {
  std::vector<Component> letters;
  std::vector<Component> specks;  ///< dots, dashes, quotes: they belong to a line but do not make one
  std::vector<Component> others;  ///< what no text looks like: pictures, frames, lines, what holds others
};

[[nodiscard]] Letters lettersAmong(std::vector<Component> components);

}  // namespace Nimbrel::Reader
