#pragma once

#include "Screencapture/DesktopLayout.h"
#include "Screencapture/X11Display.h"

namespace Nimbrel::Screencapture {

/// Monitors and windows as they are now. Monitors come in the server's order and without what of them lies beyond the
/// screen; where the server tells none, all of the screen is one. Which windows are applications is told by the window
/// manager; without one, all are.
[[nodiscard]] DesktopLayout desktopLayout(const X11Display& display);

}  // namespace Nimbrel::Screencapture
