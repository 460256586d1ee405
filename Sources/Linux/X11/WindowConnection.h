#pragma once

#include <xcb/xcb.h>

namespace Nimbrel {

/// That of Qt's windows, for what is said of a window around its being shown: on another one it could come before the
/// window. Null where Qt shows no X11 windows.
[[nodiscard]] xcb_connection_t* connectionOfWindows();

}  // namespace Nimbrel
