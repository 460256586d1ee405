#pragma once

#include "Platform/Hotkeys.h"

#include <memory>
#include <string>

namespace Nimbrel {

/// Asks the portal of the desktop for shortcuts, over a session bus connection of its own; nothing is opened before the
/// first one is asked for. Which of our processes holds one is settled by names on that bus, which begin with
/// `ownIdentifier`. Failures: notOffered without a bus or such a portal; the portal's numbers, 1 where the user
/// cancelled and 2 where it refused; 3, the bus's, where another process of ours holds it.
[[nodiscard]] std::unique_ptr<HotkeyService> makePortalHotkeys(std::string ownIdentifier);

}  // namespace Nimbrel
