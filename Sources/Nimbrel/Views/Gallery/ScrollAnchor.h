#pragma once

#include "Model/Models.h"
#include "Views/Gallery/GridLayout.h"

#include <optional>

namespace Nimbrel {

/// The anchor among the shots of a new list: the shot it was at, or the next one of the old list that is still there,
/// or else the last one before it, each at the same place on the screen. Absent when none of them is left. Pure; takes
/// one pass over the new list.
[[nodiscard]] std::optional<GridAnchor> carriedOver(const GridAnchor& anchor, const ShotList& before,
                                                    const ShotList& after);

}  // namespace Nimbrel
