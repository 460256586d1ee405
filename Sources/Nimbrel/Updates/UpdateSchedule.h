#pragma once

#include "Foundation/Timestamp.h"

#include <optional>

namespace Nimbrel {

/// Whether it is time to look for updates again, which is done once in 24 hours. A last time that lies ahead, as after
/// the clock was set back, counts as none.
[[nodiscard]] bool isUpdateCheckDue(std::optional<Timestamp> last, Timestamp now);

}  // namespace Nimbrel
