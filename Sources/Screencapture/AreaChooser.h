#pragma once

#include "Screencapture/AreaSelection.h"
#include "Screencapture/Capture.h"
#include "Screencapture/DesktopLayout.h"
#include "Screencapture/X11Display.h"

#include <QImage>

#include <functional>
#include <memory>
#include <optional>

namespace Nimbrel::Screencapture {

/// Lets the user choose a part of an X11 screen, on a picture of it that is frozen and dimmed meanwhile. Dragging or a
/// click chooses, as AreaSelection tells. Shift held leaves edges where the pointer is, the space bar carries the
/// selection, arrow keys move by a pixel (with Control by ten), Return takes, Escape and the right button cancel.
/// Display and picture must outlive it. Main thread.
class AreaChooser {
 public:
  /// What came of it: an area, or nothing when the user cancelled; neither unless the outcome is done.
  struct Choice {
    Outcome outcome;
    std::optional<ChosenArea> chosen;
  };
  /// Called once, in a later turn of the event loop, once the overlay is off the screen; never once the chooser is
  /// gone. It may destroy the chooser.
  using Then = std::function<void(Choice choice)>;
  /// Told of each window that is proposed, where windows are to be chosen.
  using Proposed = std::function<void(const StackedWindow& window)>;

  virtual ~AreaChooser() = default;
};

/// Begins. `frozen` is the screen within the layout's bounds, in the format of the root window.
[[nodiscard]] std::unique_ptr<AreaChooser> chooseArea(const X11Display& display, const DesktopLayout& layout,
                                                      const QImage& frozen, CaptureRequest::Subject subject,
                                                      AreaChooser::Proposed proposed, AreaChooser::Then then);

}  // namespace Nimbrel::Screencapture
