#pragma once

#include "Platform/WindowFocus.h"

#include <QPointer>
#include <QWidget>

#include <vector>

namespace Nimbrel {

/// The windows of this process that are off the screen while a capture is taken. Main thread.
class HiddenWindows {
 public:
  /// The focus must outlive it.
  explicit HiddenWindows(WindowFocus& focus) : focus_(focus) {}

  [[nodiscard]] bool isEmpty() const { return windows_.empty(); }

  /// Hides all that are seen.
  void hide();
  /// Brings those back that still exist, and leaves the keyboard to whoever has it by then.
  void comeBack();
  /// They stay away.
  void forget() { windows_.clear(); }

 private:
  WindowFocus& focus_;
  std::vector<QPointer<QWidget>> windows_;
};

}  // namespace Nimbrel
