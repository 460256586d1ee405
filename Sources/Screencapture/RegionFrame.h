#pragma once

#include "Screencapture/X11Display.h"

#include <QRect>

#include <memory>

namespace Nimbrel::Screencapture {

/// A thin frame around a part of the screen that is recorded, outside of it and thus in no picture of it; where the
/// area reaches the screen's border there is none. Clicks go through it. Without a display it is not there. Main
/// thread.
class RegionFrame {
 public:
  /// `area` is in pixels of the root window.
  RegionFrame(const QRect& area, int thickness);

 private:
  void addSide(const QRect& side);

  std::unique_ptr<X11Display> display_;  ///< takes the windows with it
};

}  // namespace Nimbrel::Screencapture
