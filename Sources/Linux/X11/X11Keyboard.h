#pragma once

#include "Linux/X11/XcbConnection.h"
#include "Platform/Hotkeys.h"

#include <xcb/xcb.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace Nimbrel {

/// What the keys of a keyboard give at a moment, in all of its layouts. A plain value.
struct X11Keyboard {
  xcb_keycode_t firstKey = 0;
  std::size_t symbolsPerKey = 0;
  /// Of one key after the other; what it gives in the first layout, without any other key held, comes first.
  std::vector<xcb_keysym_t> symbols;
  std::size_t keysPerModifier = 0;
  /// Those of Shift, Lock, Control and the five modifiers without a meaning of their own, one after the other; 0 is no
  /// key.
  std::vector<xcb_keycode_t> modifierKeys;

  /// As the server has it now; absent when it cannot be asked. The connection must be up.
  [[nodiscard]] static std::optional<X11Keyboard> read(XcbConnection& connection);

  /// The keys that the combination is pressed with, beside Control and Shift. A digit is known by what is printed on
  /// the key, wherever it is and whether or not it takes Shift to type it. Empty where no key gives it.
  [[nodiscard]] std::vector<xcb_keycode_t> keysOf(HotkeyAction action) const;

  /// The modifiers of all locks that a keyboard can have on at once, in any combination, none among them.
  [[nodiscard]] std::vector<std::uint16_t> lockStates() const;

  bool operator==(const X11Keyboard&) const = default;

 private:
  [[nodiscard]] std::uint16_t modifierOf(xcb_keysym_t symbol) const;
};

}  // namespace Nimbrel
