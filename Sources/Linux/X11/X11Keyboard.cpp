#include "Linux/X11/X11Keyboard.h"

#include <QChar>

#include <algorithm>

namespace Nimbrel {

namespace {

// Numbers of the X protocol for what keys give.
constexpr xcb_keysym_t spaceSymbol = 0x0020;
constexpr xcb_keysym_t fiveSymbol = 0x0035;
constexpr xcb_keysym_t firstThaiDigit = 0x0df0;
constexpr xcb_keysym_t numLockSymbol = 0xff7f;
constexpr xcb_keysym_t scrollLockSymbol = 0xff14;

/// Those of a character have its number in Unicode behind this.
constexpr xcb_keysym_t unicodeSymbols = 0x01000000;
constexpr char32_t thaiZero = 0x0e50;

constexpr std::uint16_t combination = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT;

/// Whether it is a five in the digits of another script.
bool isForeignFive(xcb_keysym_t symbol) {
  char32_t character = 0;
  if ((symbol & 0xff000000) == unicodeSymbols) character = symbol - unicodeSymbols;
  if (symbol >= firstThaiDigit && symbol <= firstThaiDigit + 9) character = thaiZero + (symbol - firstThaiDigit);
  return character != 0 && QChar::digitValue(character) == 5;
}

/// The keys that pass, each once.
template <class Passes>
std::vector<xcb_keycode_t> keysWhere(const X11Keyboard& keyboard, std::size_t symbolsLookedAt, const Passes& passes) {
  std::vector<xcb_keycode_t> keys;
  for (std::size_t start = 0; start + keyboard.symbolsPerKey <= keyboard.symbols.size();
       start += keyboard.symbolsPerKey) {
    const auto first = keyboard.symbols.begin() + static_cast<std::ptrdiff_t>(start);
    if (!std::any_of(first, first + static_cast<std::ptrdiff_t>(symbolsLookedAt), passes)) continue;
    keys.push_back(static_cast<xcb_keycode_t>(keyboard.firstKey + start / keyboard.symbolsPerKey));
  }
  return keys;
}

}  // namespace

std::optional<X11Keyboard> X11Keyboard::read(XcbConnection& connection) {
  auto* xcb = connection.get();
  const auto* setup = xcb_get_setup(xcb);
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const auto keysAsked = xcb_get_keyboard_mapping(xcb, setup->min_keycode, count);
  const auto modifiersAsked = xcb_get_modifier_mapping(xcb);
  const XcbOwned<xcb_get_keyboard_mapping_reply_t> keys(xcb_get_keyboard_mapping_reply(xcb, keysAsked, nullptr));
  const XcbOwned<xcb_get_modifier_mapping_reply_t> modifiers(
      xcb_get_modifier_mapping_reply(xcb, modifiersAsked, nullptr));
  connection.flush();
  if (!keys || !modifiers || keys->keysyms_per_keycode == 0) return std::nullopt;
  const auto* symbols = xcb_get_keyboard_mapping_keysyms(keys.get());
  const auto* codes = xcb_get_modifier_mapping_keycodes(modifiers.get());
  return X11Keyboard{.firstKey = setup->min_keycode,
                     .symbolsPerKey = keys->keysyms_per_keycode,
                     .symbols = {symbols, symbols + xcb_get_keyboard_mapping_keysyms_length(keys.get())},
                     .keysPerModifier = modifiers->keycodes_per_modifier,
                     .modifierKeys = {codes, codes + xcb_get_modifier_mapping_keycodes_length(modifiers.get())}};
}

std::vector<xcb_keycode_t> X11Keyboard::keysOf(HotkeyAction action) const {
  if (symbolsPerKey == 0) return {};
  const auto wanted = action == HotkeyAction::capture ? fiveSymbol : spaceSymbol;
  const auto isWanted = [wanted](xcb_keysym_t symbol) { return symbol == wanted; };
  // Where a key gives it by itself, others that do so with a third key held are not meant.
  if (auto keys = keysWhere(*this, 1, isWanted); !keys.empty()) return keys;
  if (auto keys = keysWhere(*this, symbolsPerKey, isWanted); !keys.empty()) return keys;
  if (action != HotkeyAction::capture) return {};
  return keysWhere(*this, symbolsPerKey, isForeignFive);
}

std::uint16_t X11Keyboard::modifierOf(xcb_keysym_t symbol) const {
  const auto keys = keysWhere(*this, symbolsPerKey, [symbol](xcb_keysym_t other) { return other == symbol; });
  for (std::size_t i = 0; i < modifierKeys.size(); ++i) {
    if (std::ranges::find(keys, modifierKeys[i]) != keys.end()) {
      return static_cast<std::uint16_t>(1U << (i / keysPerModifier));
    }
  }
  return 0;
}

std::vector<std::uint16_t> X11Keyboard::lockStates() const {
  std::uint16_t locks = XCB_MOD_MASK_LOCK;
  if (symbolsPerKey > 0 && keysPerModifier > 0) {
    for (const auto symbol : {numLockSymbol, scrollLockSymbol}) {
      locks = static_cast<std::uint16_t>(locks | modifierOf(symbol));
    }
  }
  locks = static_cast<std::uint16_t>(locks & ~combination);
  std::vector<std::uint16_t> states;
  // All subsets of the bits, counted down.
  for (auto state = locks;; state = static_cast<std::uint16_t>((state - 1) & locks)) {
    states.push_back(state);
    if (state == 0) return states;
  }
}

}  // namespace Nimbrel
