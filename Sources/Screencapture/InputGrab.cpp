#include "Screencapture/InputGrab.h"

#include <chrono>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

constexpr int mostAttempts = 20;
constexpr std::chrono::milliseconds pause(50);
constexpr std::uint16_t pointerEvents =
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;

}  // namespace

InputGrab::~InputGrab() { release(); }

void InputGrab::begin(xcb_cursor_t pointer, Then then) {
  pointer_ = pointer;
  then_ = std::move(then);
  timer_.setInterval(pause);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { attempt(); });
  timer_.start();
  attempt();
}

void InputGrab::attempt() {
  ++attempts_;
  const bool isGranted = grabBoth();
  if (!isGranted && attempts_ < mostAttempts) return;
  timer_.stop();
  // The receiver may destroy this object.
  const auto then = std::move(then_);
  then(isGranted);
}

bool InputGrab::grabBoth() const {
  auto* connection = display_.get();
  const auto keyboard =
      xcb_grab_keyboard(connection, 0, display_.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const auto pointer = xcb_grab_pointer(connection, 0, display_.root(), pointerEvents, XCB_GRAB_MODE_ASYNC,
                                        XCB_GRAB_MODE_ASYNC, XCB_NONE, pointer_, XCB_CURRENT_TIME);
  const XcbOwned<xcb_grab_keyboard_reply_t> keys(xcb_grab_keyboard_reply(connection, keyboard, nullptr));
  const XcbOwned<xcb_grab_pointer_reply_t> buttons(xcb_grab_pointer_reply(connection, pointer, nullptr));
  const bool isGranted =
      keys && keys->status == XCB_GRAB_STATUS_SUCCESS && buttons && buttons->status == XCB_GRAB_STATUS_SUCCESS;
  // One without the other would only be in somebody's way.
  if (!isGranted) release();
  return isGranted;
}

void InputGrab::release() const {
  xcb_ungrab_pointer(display_.get(), XCB_CURRENT_TIME);
  xcb_ungrab_keyboard(display_.get(), XCB_CURRENT_TIME);
  display_.flush();
}

}  // namespace Nimbrel::Screencapture
