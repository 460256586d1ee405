#pragma once

#include "Linux/Desktop/GLibHandles.h"

#include <gio/gio.h>

namespace Nimbrel {

/// A connection of our own to the session bus, since the one that the library shares would end this process with the
/// bus. Null where there is none. Any thread; waits for the bus.
[[nodiscard]] GLibObject<GDBusConnection> connectToSessionBus();

}  // namespace Nimbrel
