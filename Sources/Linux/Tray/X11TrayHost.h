#pragma once

#include "Linux/X11/XcbConnection.h"

#include <QObject>

namespace Nimbrel {

/// Whether a program on the X server takes in the icons of others (freedesktop.org, "System Tray Protocol"). Has a
/// connection of its own, since what it wants to hear of the root window is its own affair. Main thread.
class X11TrayHost final : public QObject {
  Q_OBJECT

 public:
  X11TrayHost();

  [[nodiscard]] bool isThere() const { return owner_ != XCB_WINDOW_NONE; }

 Q_SIGNALS:
  void changed();

 private:
  void hear(const xcb_generic_event_t& event);
  void look();
  [[nodiscard]] xcb_window_t askOwner();
  void select(xcb_window_t window);
  void become(xcb_window_t owner);

  XcbConnection connection_;
  xcb_window_t owner_ = XCB_WINDOW_NONE;
};

}  // namespace Nimbrel
