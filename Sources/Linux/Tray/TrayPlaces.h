#pragma once

#include <QPoint>
#include <QRect>

#include <vector>

namespace Nimbrel {

/// A screen as windows see it.
struct TrayScreen {
  QRect geometry;    ///< device-independent pixels; its corner is that of its pixels
  double scale = 1;  ///< pixels of the display to one of these
};

/// Where a place of one pixel of the display is for windows, which count device-independent ones from the corner of
/// each screen. Empty for 0, 0, which trays say that do not know, and for a place that is on no screen. Pure.
[[nodiscard]] QRect placeOfPixel(QPoint pixel, const std::vector<TrayScreen>& screens);

}  // namespace Nimbrel
