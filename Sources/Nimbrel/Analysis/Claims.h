#pragma once

#include "Foundation/Pattern.h"

#include <vector>

namespace Nimbrel {

/// Ranges of a text that share no character with one another, in order: what has been found there belongs to nobody
/// else.
class Claims {
 public:
  [[nodiscard]] bool intersect(const TextRange& range) const;

  /// Adds ranges that intersect neither one another nor those there are.
  void add(const std::vector<TextRange>& ranges);

 private:
  std::vector<TextRange> ranges_;
};

}  // namespace Nimbrel
