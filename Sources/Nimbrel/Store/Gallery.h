#pragma once

#include "Catalogue/Database.h"
#include "Catalogue/Settings.h"
#include "Model/Filter.h"
#include "Model/Models.h"
#include "Store/DerivedState.h"
#include "Store/NameKeys.h"

#include <optional>
#include <string>
#include <vector>

namespace Nimbrel {

/// A stretch of the gallery under one title, that of a day or the empty one.
struct GallerySection {
  std::string title;
  ShotList shots;
};

/// Which shots the gallery shows, and in which order. Pure functions of their arguments, for each of which a hundred
/// thousand shots are a matter of milliseconds.
namespace Gallery {

/// The shots that pass both the search and the filter, in their order. Without a result no search narrows; an empty one
/// lets nothing pass. `derived` must be that of these shots.
[[nodiscard]] ShotList visible(const ShotList& shots, const Filter& filter, const std::optional<ShotIDSet>& matchedIDs,
                               const DerivedState& derived, Timestamp now);

/// Stably sorted; by name, equal names stand newest first. `keys` gains the keys of names that it lacks, and is not
/// touched by the other sorts.
[[nodiscard]] ShotList sorted(ShotList shots, GallerySort sort, NameKeys& keys);

enum class Grouping { None, ByDay };
struct Arrangement {
  GallerySort sort = GallerySort::newest;
  Grouping grouping = Grouping::ByDay;
};
/// With ByDay a section for each local day, the newest first, or last when the sort is `oldest`; without, one section
/// without a title, even when there is no shot.
[[nodiscard]] std::vector<GallerySection> sections(ShotList shots, const Arrangement& arrangement, Timestamp now,
                                                   NameKeys& keys);

}  // namespace Gallery

}  // namespace Nimbrel
