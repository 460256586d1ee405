#pragma once

#include "Analysis/ContentGrouping.h"
#include "Analysis/SmartCollections.h"
#include "Model/Models.h"

#include <vector>

namespace Nimbrel {

/// What follows from a shot by itself.
struct ShotTraits {
  ContentGroup group;
  SmartCollectionSet collections;

  bool operator==(const ShotTraits&) const = default;
};

/// Pure, any thread.
[[nodiscard]] ShotTraits traitsOf(const Shot& shot);

/// Those of each shot of the list; many are worked out on all cores, and this thread waits for them. Any thread.
[[nodiscard]] std::vector<ShotTraits> traitsOf(const ShotList& shots);

}  // namespace Nimbrel
