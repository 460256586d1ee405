#include "Linux/X11/X11Hotkeys.h"

#include "Linux/X11/X11Keyboard.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace Nimbrel {

using namespace std::chrono_literals;

namespace {

// Programs that type for somebody change the keyboard for a moment, several times over.
constexpr auto settling = 200ms;
constexpr std::uint16_t combination = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT;
/// The rest of a state are the buttons of the pointer, and the layout.
constexpr std::uint16_t allModifiers = 0xff;
constexpr int badValue = 2;

/// The keys of one combination, and the states of the locks in which each is grabbed.
struct Grab {
  std::vector<xcb_keycode_t> keys;
  std::vector<std::uint16_t> lockStates;

  bool operator==(const Grab&) const = default;
};

/// A key that was let go, and when by the clock of the server.
struct KeyEnd {
  xcb_keycode_t key = 0;
  xcb_timestamp_t time = 0;

  bool operator==(const KeyEnd&) const = default;
};

/// Whether it is a press of the combination. As long as one is held down all keys come here, whatever else is held.
bool isOf(const Grab& grab, const xcb_key_press_event_t& press) {
  if (std::ranges::find(grab.keys, press.detail) == grab.keys.end()) return false;
  const auto modifiers = static_cast<std::uint16_t>(press.state & allModifiers);
  return std::ranges::any_of(grab.lockStates, [&](auto locks) { return modifiers == (combination | locks); });
}

class X11Hotkeys final : public HotkeyService {
 public:
  explicit X11Hotkeys(std::shared_ptr<XcbConnection> connection);
  ~X11Hotkeys() override;
  X11Hotkeys(const X11Hotkeys&) = delete;
  X11Hotkeys& operator=(const X11Hotkeys&) = delete;

  void observe(Events events) override { events_ = std::move(events); }
  void hold(HotkeyAction action) override;
  void release(HotkeyAction action) override;

 private:
  [[nodiscard]] std::optional<HotkeyFailure> take(const Grab& grab);
  void letGo(const Grab& grab);
  void hear(const xcb_generic_event_t& event);
  void hearPress(const xcb_key_press_event_t& press);
  void followKeyboard();
  void fail(HotkeyAction action, const HotkeyFailure& failure) const;

  std::shared_ptr<XcbConnection> connection_;
  Events events_;
  std::map<HotkeyAction, Grab> held_;
  KeyEnd lastEnd_;
  QTimer settling_;
};

Grab grabFor(const X11Keyboard& keyboard, HotkeyAction action) {
  return {keyboard.keysOf(action), keyboard.lockStates()};
}

template <class Visit>
void forEachKey(const Grab& grab, const Visit& visit) {
  for (const auto key : grab.keys) {
    for (const auto locks : grab.lockStates) visit(key, static_cast<std::uint16_t>(combination | locks));
  }
}

X11Hotkeys::X11Hotkeys(std::shared_ptr<XcbConnection> connection) : connection_(std::move(connection)) {
  settling_.setSingleShot(true);
  settling_.setInterval(settling);
  QObject::connect(&settling_, &QTimer::timeout, &settling_, [this] { followKeyboard(); });
  QObject::connect(connection_.get(), &XcbConnection::eventCame, &settling_,
                   [this](const xcb_generic_event_t& event) { hear(event); });
}

X11Hotkeys::~X11Hotkeys() {
  // The connection may go on for others.
  for (const auto& [action, grab] : held_) letGo(grab);
}

void X11Hotkeys::hold(HotkeyAction action) {
  if (held_.contains(action)) return;
  if (!connection_->isUp()) return fail(action, {});
  const auto keyboard = X11Keyboard::read(*connection_);
  if (!keyboard) return fail(action, {});
  auto grab = grabFor(*keyboard, action);
  if (const auto failure = take(grab)) return fail(action, *failure);
  held_.emplace(action, std::move(grab));
}

void X11Hotkeys::release(HotkeyAction action) {
  const auto held = held_.extract(action);
  if (!held.empty()) letGo(held.mapped());
}

std::optional<HotkeyFailure> X11Hotkeys::take(const Grab& grab) {
  if (grab.keys.empty()) return HotkeyFailure{.error = badValue, .isTemporary = true};
  auto* xcb = connection_->get();
  std::vector<xcb_void_cookie_t> requests;
  forEachKey(grab, [&](xcb_keycode_t key, std::uint16_t modifiers) {
    requests.push_back(
        xcb_grab_key_checked(xcb, 0, connection_->root(), modifiers, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
  });
  std::optional<HotkeyFailure> failure;
  for (const auto request : requests) {
    const XcbOwned<xcb_generic_error_t> error(xcb_request_check(xcb, request));
    if (error && !failure) failure = HotkeyFailure{.error = error->error_code, .isTemporary = true};
  }
  connection_->flush();
  if (!connection_->isUp()) return HotkeyFailure();
  // One that works with some locks only would be worse than none.
  if (failure) letGo(grab);
  return failure;
}

void X11Hotkeys::letGo(const Grab& grab) {
  if (!connection_->isUp()) return;
  forEachKey(grab, [this](xcb_keycode_t key, std::uint16_t modifiers) {
    xcb_ungrab_key(connection_->get(), key, connection_->root(), modifiers);
  });
  connection_->flush();
}

void X11Hotkeys::hear(const xcb_generic_event_t& event) {
  // What other clients send is no press: such events have a bit more.
  switch (event.response_type) {
    case XCB_KEY_PRESS:
      return hearPress(reinterpret_cast<const xcb_key_press_event_t&>(event));
    case XCB_KEY_RELEASE: {
      const auto& end = reinterpret_cast<const xcb_key_release_event_t&>(event);
      lastEnd_ = {end.detail, end.time};
      return;
    }
    case XCB_MAPPING_NOTIFY:
      if (!held_.empty() && !settling_.isActive()) settling_.start();
      return;
    default:
      return;
  }
}

void X11Hotkeys::hearPress(const xcb_key_press_event_t& press) {
  // While a key stays down the server repeats it, each time let go and pressed in the same moment.
  if (lastEnd_ == KeyEnd{press.detail, press.time}) return;
  for (const auto& [action, grab] : held_) {
    if (!isOf(grab, press)) continue;
    if (events_.pressed) events_.pressed(action);
    return;
  }
}

void X11Hotkeys::followKeyboard() {
  if (!connection_->isUp()) return;
  const auto keyboard = X11Keyboard::read(*connection_);
  if (!keyboard) return;
  std::map<HotkeyAction, Grab> moved;
  for (const auto& [action, grab] : held_) {
    if (auto next = grabFor(*keyboard, action); next != grab) moved.emplace(action, std::move(next));
  }
  // All at first: one may take the place of another.
  for (const auto& [action, next] : moved) letGo(held_[action]);
  std::map<HotkeyAction, HotkeyFailure> lost;
  for (auto& [action, next] : moved) {
    if (const auto failure = take(next)) lost.emplace(action, *failure);
    held_[action] = std::move(next);
  }
  for (const auto& [action, failure] : lost) held_.erase(action);
  for (const auto& [action, failure] : lost) fail(action, failure);
}

void X11Hotkeys::fail(HotkeyAction action, const HotkeyFailure& failure) const {
  if (events_.failed) events_.failed(action, failure);
}

}  // namespace

std::unique_ptr<HotkeyService> makeX11Hotkeys(std::shared_ptr<XcbConnection> connection) {
  return std::make_unique<X11Hotkeys>(std::move(connection));
}

}  // namespace Nimbrel
