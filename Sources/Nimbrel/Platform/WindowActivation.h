#pragma once

#include <QWindow>

#include <string>

namespace Nimbrel {

/// Has the desktop give the keyboard to a window that the user has asked for, which may be on another workspace, or
/// while another program is in front. Main thread only.
class WindowActivation {
 public:
  virtual ~WindowActivation() = default;

  /// Brings a window that is shown to the front of the workspace in use. `token` is what the desktop gave whoever asked
  /// for it on the user's behalf ("activation-token", "desktop-startup-id"); empty when there is none. Desktops may
  /// refuse, and nobody hears of it.
  virtual void bringToFront(QWindow& window, const std::string& token) = 0;
};

/// Where there is no more to say than that a window wants the keyboard.
class NullWindowActivation final : public WindowActivation {
 public:
  void bringToFront(QWindow& window, const std::string&) override { window.requestActivate(); }
};

}  // namespace Nimbrel
