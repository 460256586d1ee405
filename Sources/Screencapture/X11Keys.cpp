#include "Screencapture/X11Keys.h"

#include <array>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

/// Numbers of the X protocol for what is printed on the keys.
constexpr std::array<std::pair<xcb_keysym_t, OverlayKey>, 12> meanings{{
    {0xff1b, OverlayKey::cancel},  // Escape
    {0xff0d, OverlayKey::take},    // Return
    {0xff8d, OverlayKey::take},    // Enter
    {0x0020, OverlayKey::carry},   // space bar
    {0xff51, OverlayKey::left},
    {0xff52, OverlayKey::up},
    {0xff53, OverlayKey::right},
    {0xff54, OverlayKey::down},
    {0xff96, OverlayKey::left},  // on the keypad
    {0xff97, OverlayKey::up},
    {0xff98, OverlayKey::right},
    {0xff99, OverlayKey::down},
}};

OverlayKey meaningOf(xcb_keysym_t symbol) {
  for (const auto& [known, meaning] : meanings) {
    if (known == symbol) return meaning;
  }
  return OverlayKey::none;
}

}  // namespace

X11Keys::X11Keys(const X11Display& display) {
  const auto* setup = xcb_get_setup(display.get());
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const XcbOwned<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
      display.get(), xcb_get_keyboard_mapping(display.get(), setup->min_keycode, count), nullptr));
  if (!reply || reply->keysyms_per_keycode == 0) return;
  const auto* symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
  const int length = xcb_get_keyboard_mapping_keysyms_length(reply.get());
  // What a key gives without any other one held comes first.
  for (int i = 0; i < length; i += reply->keysyms_per_keycode) {
    const auto code = static_cast<xcb_keycode_t>(setup->min_keycode + i / reply->keysyms_per_keycode);
    if (const auto meaning = meaningOf(symbols[i]); meaning != OverlayKey::none) keys_[code] = meaning;
  }
}

OverlayKey X11Keys::operator[](xcb_keycode_t code) const {
  const auto found = keys_.find(code);
  return found == keys_.end() ? OverlayKey::none : found->second;
}

}  // namespace Nimbrel::Screencapture
