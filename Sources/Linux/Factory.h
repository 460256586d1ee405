#pragma once

#include "Platform/Services.h"

namespace Nimbrel {

/// The services as this desktop offers them, chosen at run time. Needs a QCoreApplication. Main thread only.
[[nodiscard]] Services makeServices();

}  // namespace Nimbrel
