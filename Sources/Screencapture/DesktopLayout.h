#pragma once

#include <QPoint>
#include <QRect>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Where monitors and windows are, in pixels of the X11 screen. Values without a connection to any server.
namespace Nimbrel::Screencapture {

/// A monitor, or a part of one that the user treats as such.
struct Monitor {
  std::string name;
  QRect area;
  bool isPrimary = false;

  bool operator==(const Monitor&) const = default;
};

/// A window as it stands among the others.
struct StackedWindow {
  std::uint32_t id = 0;        ///< of the window right below the root, which is the frame where there is one
  QRect area;                  ///< as its user sees it: with its frame, without its shadow; may reach beyond the screen
  bool isApplication = false;  ///< can be chosen; what cannot (menus, the desktop) only covers

  bool operator==(const StackedWindow&) const = default;
};

struct DesktopLayout {
  QRect bounds;                        ///< of the screen; some of it may be on no monitor
  std::vector<Monitor> monitors;       ///< never none
  std::vector<StackedWindow> windows;  ///< that are shown, from the lowest to the uppermost
};

/// The one that the user calls the main one, else the first.
[[nodiscard]] const Monitor& mainMonitor(const std::vector<Monitor>& monitors);

/// The monitor that shows most of the area; the first when none shows any.
[[nodiscard]] const Monitor& monitorOf(const std::vector<Monitor>& monitors, const QRect& area);

/// The uppermost window there that can be chosen.
[[nodiscard]] std::optional<StackedWindow> applicationAt(const DesktopLayout& layout, QPoint point);

/// Whether nothing covers any of the window and all of it is on the screen.
[[nodiscard]] bool isWhollyVisible(const DesktopLayout& layout, const StackedWindow& window);

/// The point with each coordinate moved to the nearest edge that is seen no further than `reach` away, of a window or a
/// monitor. Points and edges lie between pixels: 0 is before the first, the width of the screen behind the last.
[[nodiscard]] QPoint snapped(const DesktopLayout& layout, QPoint point, int reach);

}  // namespace Nimbrel::Screencapture
