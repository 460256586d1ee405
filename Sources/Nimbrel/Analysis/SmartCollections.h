#pragma once

#include "Analysis/ContentGrouping.h"
#include "Analysis/ShotText.h"
#include "Model/Models.h"
#include "Model/ProductivityModels.h"

#include <bitset>

namespace Nimbrel {

/// Whether a shot belongs to a smart collection. Pure, any thread. A shot that was not read belongs to none.
[[nodiscard]] bool matches(SmartCollection collection, const Shot& shot);

/// By the number of the case.
using SmartCollectionSet = std::bitset<allSmartCollections.size()>;

/// All collections that a shot belongs to, with its text made ready and its group known. Pure, any thread.
[[nodiscard]] SmartCollectionSet collectionsOf(const Shot& shot, const ShotText& text, const ContentGroup& group);

}  // namespace Nimbrel
