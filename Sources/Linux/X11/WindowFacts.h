#pragma once

#include "Linux/X11/XcbConnection.h"

#include <sys/types.h>

#include <optional>
#include <string>

namespace Nimbrel {

/// What a window says about the program that it belongs to. Whatever it does not say is empty.
struct WindowFacts {
  std::string instanceName;
  std::string className;
  std::string title;
  std::string desktopEntry;  ///< id of the program's desktop entry, without ".desktop"
  pid_t process = 0;         ///< 0 when it runs on another machine
};

/// The window that the user works in, as the window manager tells; absent when it tells none.
[[nodiscard]] std::optional<xcb_window_t> activeWindow(XcbConnection& connection);

/// Windows may be gone by the time that they are asked; such a one says nothing.
[[nodiscard]] WindowFacts factsOf(XcbConnection& connection, xcb_window_t window);

}  // namespace Nimbrel
