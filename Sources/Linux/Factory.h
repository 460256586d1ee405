#pragma once

#include "Platform/Services.h"

#include <string>

namespace Nimbrel {

/// The services as this desktop offers them, chosen at run time. Windows of our own processes are told from others by
/// `ownIdentifier`. Needs a QCoreApplication. Main thread only.
[[nodiscard]] Services makeServices(const std::string& ownIdentifier);

}  // namespace Nimbrel
