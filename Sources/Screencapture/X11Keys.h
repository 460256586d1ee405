#pragma once

#include "Screencapture/X11Display.h"

#include <map>

namespace Nimbrel::Screencapture {

/// The keys that mean something to the overlay.
enum class OverlayKey { none, cancel, take, carry, left, right, up, down };

/// Which of them the keys of a keyboard are.
class X11Keys {
 public:
  /// Asks for the keyboard as it is now.
  explicit X11Keys(const X11Display& display);

  [[nodiscard]] OverlayKey operator[](xcb_keycode_t code) const;

 private:
  std::map<xcb_keycode_t, OverlayKey> keys_;
};

}  // namespace Nimbrel::Screencapture
