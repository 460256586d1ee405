#include "Analysis/Claims.h"

#include <algorithm>

namespace Nimbrel {

bool Claims::intersect(const TextRange& range) const {
  const auto next = std::ranges::upper_bound(ranges_, range.start, {}, &TextRange::end);
  return next != ranges_.end() && next->intersects(range);
}

void Claims::add(const std::vector<TextRange>& ranges) {
  ranges_.insert(ranges_.end(), ranges.begin(), ranges.end());
  std::ranges::sort(ranges_, {}, &TextRange::start);
}

}  // namespace Nimbrel
