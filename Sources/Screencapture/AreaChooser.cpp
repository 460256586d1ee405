#include "Screencapture/AreaChooser.h"

#include "Screencapture/InputGrab.h"
#include "Screencapture/InterfaceScale.h"
#include "Screencapture/OverlayWindow.h"
#include "Screencapture/X11Keys.h"

#include <QSocketNotifier>
#include <QTimer>

#include <xcb/xcb_cursor.h>

#include <cmath>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

constexpr int largeStep = 10;
constexpr xcb_button_t takingButton = 1;
constexpr xcb_button_t cancellingButton = 3;

ScaleWishes scaleWishes(const X11Display& display) {
  return {qgetenv("QT_SCALE_FACTOR"), qgetenv("QT_SCREEN_SCALE_FACTORS"),
          typeResolution(display.text(display.root(), "RESOURCE_MANAGER"))};
}

/// The crosshair of the user's pointer theme, or the server's own; the usual pointer where there is neither.
xcb_cursor_t crosshair(const X11Display& display) {
  xcb_cursor_context_t* context = nullptr;
  auto* screen = const_cast<xcb_screen_t*>(&display.screen());
  if (xcb_cursor_context_new(display.get(), screen, &context) != 0) return XCB_NONE;
  const auto cursor = xcb_cursor_load_cursor(context, "crosshair");
  xcb_cursor_context_free(context);
  return cursor;
}

QPoint stepOf(OverlayKey key) {
  switch (key) {
    case OverlayKey::left:
      return {-1, 0};
    case OverlayKey::right:
      return {1, 0};
    case OverlayKey::up:
      return {0, -1};
    case OverlayKey::down:
      return {0, 1};
    default:
      return {};
  }
}

AreaSelection::Reaches reachesAt(double scale) {
  const AreaSelection::Reaches usual;
  return {static_cast<int>(std::lround(usual.drag * scale)), static_cast<int>(std::lround(usual.snap * scale))};
}

QPoint pointerPlace(const X11Display& display) {
  const XcbOwned<xcb_query_pointer_reply_t> reply(
      xcb_query_pointer_reply(display.get(), xcb_query_pointer(display.get(), display.root()), nullptr));
  return reply ? QPoint(reply->root_x, reply->root_y) : QPoint();
}

class X11AreaChooser final : public AreaChooser {
 public:
  X11AreaChooser(const X11Display& display, const DesktopLayout& layout, const QImage& frozen,
                 CaptureRequest::Subject subject, Proposed proposed, Then then)
      : display_(display),
        layout_(layout),
        frozen_(frozen),
        proposed_(std::move(proposed)),
        then_(std::move(then)),
        wishes_(scaleWishes(display)),
        selection_(layout, subject, reachesAt(scaleOn(mainMonitor(layout.monitors)))),
        keys_(display),
        cursor_(crosshair(display)),
        grab_(std::make_unique<InputGrab>(display)),
        events_(xcb_get_file_descriptor(display.get()), QSocketNotifier::Read) {
    QObject::connect(&events_, &QSocketNotifier::activated, &context_, [this] { handleEvents(); });
    QTimer::singleShot(0, &context_, [this] { grab_->begin(cursor_, [this](bool isGranted) { begin(isGranted); }); });
  }
  ~X11AreaChooser() override {
    window_.reset();
    grab_.reset();
    if (cursor_ != XCB_NONE) xcb_free_cursor(display_.get(), cursor_);
    display_.flush();
  }
  X11AreaChooser(const X11AreaChooser&) = delete;
  X11AreaChooser& operator=(const X11AreaChooser&) = delete;

 private:
  void begin(bool isGranted) {
    if (!display_.isUp()) return end({.outcome = {Failed, X11Display::lossOfServer().message}});
    if (!isGranted) return end({.outcome = {Refused, "another program holds keyboard or pointer"}});
    selection_.movePointer(pointerPlace(display_));
    auto window = OverlayWindow::show(display_, frozen_, scene());
    if (!window) return end({.outcome = {Failed, window.error().message}});
    window_ = std::move(window).value();
    propose();
    handleEvents();
  }

  /// Until none is left: drawing reads from the connection as well, and what has been read wakes nobody any more.
  void handleEvents() {
    while (handleThoseThatCame()) {
      if (isEnded_ || !window_) return;
      window_->change(scene());
      propose();
    }
    if (!display_.isUp()) end({.outcome = {Failed, X11Display::lossOfServer().message}});
  }

  /// Only then it is drawn: a pointer that moves faster than that skips places.
  bool handleThoseThatCame() {
    bool hasCome = false;
    while (!isEnded_) {
      const XcbOwned<xcb_generic_event_t> event(xcb_poll_for_event(display_.get()));
      if (!event) break;
      hasCome = true;
      handle(*event);
    }
    return hasCome;
  }

  void handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7f) {
      case XCB_MOTION_NOTIFY:
        return movePointer(reinterpret_cast<const xcb_motion_notify_event_t&>(event));
      case XCB_BUTTON_PRESS:
        return press(reinterpret_cast<const xcb_button_press_event_t&>(event));
      case XCB_BUTTON_RELEASE:
        return release(reinterpret_cast<const xcb_button_release_event_t&>(event));
      case XCB_KEY_PRESS:
        return pressKey(reinterpret_cast<const xcb_key_press_event_t&>(event));
      case XCB_KEY_RELEASE:
        return releaseKey(reinterpret_cast<const xcb_key_release_event_t&>(event));
      case XCB_MAPPING_NOTIFY:
        keys_ = X11Keys(display_);
        return;
      default:
        if (window_) window_->handle(event);
    }
  }

  template <class Event>
  void movePointer(const Event& event) {
    selection_.setExact((event.state & XCB_MOD_MASK_SHIFT) != 0);
    selection_.movePointer({event.root_x, event.root_y});
  }

  void press(const xcb_button_press_event_t& event) {
    movePointer(event);
    if (event.detail == takingButton) selection_.press();
    if (event.detail == cancellingButton) end({});
  }

  void release(const xcb_button_release_event_t& event) {
    movePointer(event);
    if (event.detail == takingButton) take(selection_.release());
  }

  void pressKey(const xcb_key_press_event_t& event) {
    const auto key = keys_[event.detail];
    if (key == OverlayKey::cancel) return end({});
    if (key == OverlayKey::take) return take(selection_.take());
    if (key == OverlayKey::carry) return selection_.setCarried(true);
    const bool isLarge = (event.state & XCB_MOD_MASK_CONTROL) != 0;
    if (const auto step = stepOf(key); !step.isNull()) selection_.nudge(isLarge ? step * largeStep : step);
  }

  void releaseKey(const xcb_key_release_event_t& event) {
    if (keys_[event.detail] == OverlayKey::carry) selection_.setCarried(false);
  }

  void take(const std::optional<ChosenArea>& chosen) {
    if (chosen) end({.chosen = chosen});
  }

  void propose() {
    const auto window = selection_.proposedWindow();
    if (window && window != lastProposed_) proposed_(*window);
    lastProposed_ = window;
  }

  [[nodiscard]] OverlayScene scene() const {
    const auto area = selection_.area();
    const auto& monitor = monitorOf(layout_.monitors, area);
    const auto window = selection_.proposedWindow();
    return overlayScene(area, monitor.area, scaleOn(monitor), (window ? window->area : area).size());
  }

  [[nodiscard]] double scaleOn(const Monitor& monitor) const {
    return interfaceScale(wishes_, monitor.name, static_cast<int>(&monitor - layout_.monitors.data()));
  }

  void end(Choice choice) {
    if (std::exchange(isEnded_, true)) return;
    events_.setEnabled(false);
    window_.reset();
    QTimer::singleShot(0, &context_, [this, choice = std::move(choice)] {
      grab_.reset();
      const auto then = std::move(then_);
      then(choice);
    });
  }

  const X11Display& display_;
  const DesktopLayout layout_;
  const QImage& frozen_;
  Proposed proposed_;
  Then then_;
  ScaleWishes wishes_;
  AreaSelection selection_;
  X11Keys keys_;
  xcb_cursor_t cursor_;
  std::unique_ptr<InputGrab> grab_;
  std::unique_ptr<OverlayWindow> window_;
  std::optional<StackedWindow> lastProposed_;
  bool isEnded_ = false;
  QSocketNotifier events_;
  QObject context_;
};

}  // namespace

std::unique_ptr<AreaChooser> chooseArea(const X11Display& display, const DesktopLayout& layout, const QImage& frozen,
                                        CaptureRequest::Subject subject, AreaChooser::Proposed proposed,
                                        AreaChooser::Then then) {
  return std::make_unique<X11AreaChooser>(display, layout, frozen, subject, std::move(proposed), std::move(then));
}

}  // namespace Nimbrel::Screencapture
