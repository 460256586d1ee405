#pragma once

#include "Screencapture/X11Display.h"

#include <QRect>

#include <string>
#include <vector>

namespace Nimbrel::Screencapture {

/// A monitor, or a part of one that the user treats as such.
struct Monitor {
  std::string name;
  QRect area;
  bool isPrimary = false;

  bool operator==(const Monitor&) const = default;
};

/// The monitors that are on, in the server's order, never none: where the server does not tell, all of the screen is
/// one. What of them lies beyond the screen is cut off. They may overlap and leave gaps.
[[nodiscard]] std::vector<Monitor> monitorsOf(const X11Display& display);

/// The one that the user calls the main one, else the first. Of at least one.
[[nodiscard]] const Monitor& mainMonitor(const std::vector<Monitor>& monitors);

}  // namespace Nimbrel::Screencapture
