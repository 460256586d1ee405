#pragma once

#include "Screencapture/X11Display.h"

#include <QTimer>

#include <functional>

namespace Nimbrel::Screencapture {

/// Keyboard and pointer for ourselves alone, whatever window they are over. A menu that is still open holds them, so
/// that it is tried again for a second. The display must outlive it. Main thread.
class InputGrab {
 public:
  using Then = std::function<void(bool isGranted)>;

  explicit InputGrab(const X11Display& display) : display_(display) {}
  /// Lets go of both.
  ~InputGrab();
  InputGrab(const InputGrab&) = delete;
  InputGrab& operator=(const InputGrab&) = delete;

  /// `then` comes once, maybe during this call; never once the grab is gone. Events come for the root window.
  void begin(xcb_cursor_t pointer, Then then);

 private:
  void attempt();
  [[nodiscard]] bool grabBoth() const;
  void release() const;

  const X11Display& display_;
  xcb_cursor_t pointer_ = 0;
  Then then_;
  int attempts_ = 0;
  QTimer timer_;
};

}  // namespace Nimbrel::Screencapture
