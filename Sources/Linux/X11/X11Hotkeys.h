#pragma once

#include "Linux/X11/XcbConnection.h"
#include "Platform/Hotkeys.h"

#include <memory>

namespace Nimbrel {

/// Grabs keys of an X11 desktop, whatever locks are on, and follows the keyboard when its layout changes. Failures have
/// the numbers of the X protocol: 10 where another program holds the combination, 2 where no key gives it. The server
/// knows no word for a key that has been let go.
[[nodiscard]] std::unique_ptr<HotkeyService> makeX11Hotkeys(std::shared_ptr<XcbConnection> connection);

}  // namespace Nimbrel
