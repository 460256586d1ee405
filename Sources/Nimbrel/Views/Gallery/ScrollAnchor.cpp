#include "Views/Gallery/ScrollAnchor.h"

#include <unordered_map>

namespace Nimbrel {

std::optional<GridAnchor> carriedOver(const GridAnchor& anchor, const ShotList& before, const ShotList& after) {
  std::unordered_map<ShotID, std::size_t> places;
  places.reserve(after.size());
  for (std::size_t i = 0; i < after.size(); ++i) places.emplace(after[i]->id, i);
  const auto at = [&](std::size_t cell) -> std::optional<GridAnchor> {
    const auto found = places.find(before[cell]->id);
    if (found == places.end()) return std::nullopt;
    return GridAnchor{.cell = found->second, .offset = anchor.offset};
  };
  for (auto cell = anchor.cell; cell < before.size(); ++cell) {
    if (auto carried = at(cell)) return carried;
  }
  for (auto cell = anchor.cell; cell > 0; --cell) {
    if (auto carried = at(cell - 1)) return carried;
  }
  return std::nullopt;
}

}  // namespace Nimbrel
