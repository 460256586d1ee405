#pragma once

#include "Screencapture/DesktopLayout.h"
#include "Screencapture/X11Display.h"

#include <QElapsedTimer>
#include <QImage>
#include <QObject>

#include <functional>
#include <map>
#include <optional>

namespace Nimbrel::Screencapture {

/// The pixels of windows that others cover or that reach beyond the screen. The server keeps them apart on demand
/// (Composite), and then their programs draw what was covered. The display must outlive it. Main thread.
class CoveredWindows {
 public:
  /// Absent where the server cannot do that, and for a window that is gone.
  using Then = std::function<void(std::optional<QImage> pixels)>;

  explicit CoveredWindows(const X11Display& display);

  /// Has the pixels of a window kept apart from now on, ahead of the need for them. Again, it does nothing.
  void keep(const StackedWindow& window);

  /// What the window shows within its area, once its program has had the time to draw it: in a later turn of the event
  /// loop, never once this object is gone. Transparent where the window is.
  void read(const StackedWindow& window, Then then);

 private:
  [[nodiscard]] std::optional<QImage> pixelsOf(const StackedWindow& window) const;

  const X11Display& display_;
  bool isAble_;
  std::map<std::uint32_t, QElapsedTimer> kept_;  ///< how long
  QObject context_;
};

}  // namespace Nimbrel::Screencapture
