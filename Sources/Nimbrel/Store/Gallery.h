#pragma once

#include "Catalogue/Settings.h"
#include "Model/Filter.h"
#include "Model/Models.h"
#include "Store/DerivedState.h"

#include <string>
#include <vector>

namespace Nimbrel {

/// A stretch of the gallery under one title, that of a day or the empty one.
struct GallerySection {
  std::string title;
  ShotList shots;
};

/// Which shots the gallery shows, and in which order. Pure functions of their arguments.
namespace Gallery {

/// The shots that pass the filter, in their order. `derived` must be that of these shots.
[[nodiscard]] ShotList passing(const Filter& filter, const ShotList& shots, const DerivedState& derived, Timestamp now);

/// Stably sorted; by name, equal names stand newest first.
[[nodiscard]] ShotList sorted(ShotList shots, GallerySort sort);

enum class Grouping { None, ByDay };
/// With ByDay a section for each local day, the newest first, or last when the sort is `oldest`; without, one section
/// without a title, even when there is no shot.
[[nodiscard]] std::vector<GallerySection> sections(const ShotList& shots, GallerySort sort, Grouping grouping,
                                                   Timestamp now);

}  // namespace Gallery

}  // namespace Nimbrel
