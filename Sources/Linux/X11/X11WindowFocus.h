#pragma once

#include "Linux/X11/XcbConnection.h"
#include "Platform/WindowFocus.h"

#include <memory>

namespace Nimbrel {

/// Asks the window manager of an X11 screen (_NET_ACTIVE_WINDOW of freedesktop.org's Extended Window Manager Hints).
[[nodiscard]] std::unique_ptr<WindowFocus> makeX11WindowFocus(std::shared_ptr<XcbConnection> connection);

}  // namespace Nimbrel
