#pragma once

#include "Outcome.h"

#include "Store/Store.h"

namespace Nimbrel::Ctl {

/// Moves the shots to the Trash and waits until that is done.
[[nodiscard]] Outcome trashed(Store& store, const ShotList& shots);

}  // namespace Nimbrel::Ctl
