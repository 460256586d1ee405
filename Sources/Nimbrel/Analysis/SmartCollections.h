#pragma once

#include "Model/Models.h"
#include "Model/ProductivityModels.h"

namespace Nimbrel {

/// Whether a shot belongs to a smart collection. Pure, any thread. A shot that was not read belongs to none.
[[nodiscard]] bool matches(SmartCollection collection, const Shot& shot);

}  // namespace Nimbrel
