#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <span>

namespace Nimbrel {

/// That of Qt's windows, for what is said of a window around its being shown: on another one it could come before the
/// window. Null where Qt shows no X11 windows.
[[nodiscard]] xcb_connection_t* connectionOfWindows();

/// Asks whoever manages the windows of that root for something about one of them: up to five words of a message of that
/// kind (freedesktop.org, "Extended Window Manager Hints"). Not flushed.
void tellWindowManager(xcb_connection_t& server, xcb_window_t root, xcb_window_t window, xcb_atom_t what,
                       std::span<const std::uint32_t> words);

}  // namespace Nimbrel
