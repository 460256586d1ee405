#pragma once

class QWindow;

namespace Nimbrel {

/// What is asked of the desktop for windows that float above the work of other programs. Main thread only.
class WindowStacking {
 public:
  virtual ~WindowStacking() = default;

  /// Whether windows have a say in where they are: at which place, and above which others.
  [[nodiscard]] virtual bool canPlace() const = 0;

  /// Whether windows can be seen through, so that they may have round corners and fade. Other desktops show black
  /// there.
  [[nodiscard]] virtual bool isComposited() const = 0;

  /// Keeps a window above all others and on all workspaces, and out of the lists of windows. Desktops forget that when
  /// a window is hidden: to be called each time before it is shown. Where windows cannot be placed nothing happens.
  virtual void keepAbove(QWindow& window) = 0;
};

/// Where the desktop alone decides, as on Wayland.
class NullWindowStacking final : public WindowStacking {
 public:
  [[nodiscard]] bool canPlace() const override { return false; }
  [[nodiscard]] bool isComposited() const override { return true; }
  void keepAbove(QWindow&) override {}
};

}  // namespace Nimbrel
