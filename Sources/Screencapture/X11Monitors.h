#pragma once

#include "Screencapture/DesktopLayout.h"
#include "Screencapture/X11Display.h"

#include <vector>

namespace Nimbrel::Screencapture {

/// The monitors that are on, in the server's order, never none: where the server does not tell, all of the screen is
/// one. What of them lies beyond the screen is cut off. They may overlap and leave gaps.
[[nodiscard]] std::vector<Monitor> monitorsOf(const X11Display& display);

}  // namespace Nimbrel::Screencapture
