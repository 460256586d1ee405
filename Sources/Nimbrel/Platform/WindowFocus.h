#pragma once

#include <QRect>

#include <cstdint>
#include <optional>

namespace Nimbrel {

/// The window in which the user works.
struct FocusedWindow {
  std::uint64_t id = 0;  ///< as the session numbers it
  bool isOurs = false;   ///< belongs to this process
  QRect place;           ///< without its frame, in pixels of the screens

  bool operator==(const FocusedWindow&) const = default;
};

/// Which window has the keyboard, for windows of ours that come up over the work in another program and give it back.
/// Main thread only.
class WindowFocus {
 public:
  virtual ~WindowFocus() = default;

  /// The window that has the keyboard; absent when none has it, or when the session does not tell.
  [[nodiscard]] virtual std::optional<FocusedWindow> current() const = 0;

  /// Brings the window to the front and gives it the keyboard. Nothing happens when it is gone by then.
  virtual void giveTo(std::uint64_t id) = 0;
};

/// Where the desktop alone decides, as on Wayland: it gives the keyboard back by itself when a window of ours is
/// hidden.
class NullWindowFocus final : public WindowFocus {
 public:
  [[nodiscard]] std::optional<FocusedWindow> current() const override { return std::nullopt; }
  void giveTo(std::uint64_t) override {}
};

}  // namespace Nimbrel
