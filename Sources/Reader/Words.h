#pragma once

#include "Reader/LineFinder.h"

#include <string>
#include <vector>

namespace Nimbrel::Reader {

/// A word as it was recognised.
struct Word {
  std::string text;  ///< UTF-8
  double left = 0;
  double right = 0;
  float confidence = 0;  ///< 0 to 100
};

/// The text of a line of which `words` were recognised, in the coordinates of the line. The letters that the line was
/// found by know better where a blank is and how many dashes stand side by side. Empty for what is no text.
[[nodiscard]] std::string textOf(const std::vector<Word>& words, const Line& line);

/// The distance from one letter to the next where all letters take the same room, as in code; 0 where they do not.
/// `parts` are ordered by their left edges.
[[nodiscard]] double fixedPitch(const std::vector<Box>& parts, int height);

}  // namespace Nimbrel::Reader
