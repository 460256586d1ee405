#pragma once

#include "Linux/X11/XcbConnection.h"

#include <QObject>

#include <xcb/xcb.h>

#include <memory>

namespace Nimbrel {

/// The program of an X11 desktop that keeps what others copied beyond their end, where there is one
/// (the owner of CLIPBOARD_MANAGER, as freedesktop.org has it). Main thread only.
class X11ClipboardManager final : public QObject {
  Q_OBJECT
 public:
  explicit X11ClipboardManager(std::shared_ptr<XcbConnection> connection);

  /// Asks it to fetch everything that the owner of the clipboard offers; saved() follows once it has. Nothing follows
  /// where there is no manager, or it does not want it. The owner must be able to answer meanwhile.
  void save();

 Q_SIGNALS:
  void saved();

 private:
  void hear(const xcb_generic_event_t& event);

  std::shared_ptr<XcbConnection> connection_;
  xcb_window_t window_ = XCB_WINDOW_NONE;  ///< that it answers to; goes with the connection
};

}  // namespace Nimbrel
