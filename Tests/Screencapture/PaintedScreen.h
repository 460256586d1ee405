#pragma once

#include "Screencapture/X11Display.h"

#include <QColor>

#include <memory>

namespace Nimbrel::Testing {

/// A display that shows one colour wherever no other window is.
class PaintedScreen {
 public:
  explicit PaintedScreen(const QColor& colour);

  [[nodiscard]] const Screencapture::X11Display& display() const { return *display_; }
  /// On the screen when it returns.
  void paint(const QColor& colour);

 private:
  std::unique_ptr<Screencapture::X11Display> display_;
};

}  // namespace Nimbrel::Testing
