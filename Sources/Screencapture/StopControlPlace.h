#pragma once

#include <QRect>
#include <QSize>

#include <optional>

namespace Nimbrel::Screencapture {

// Where the control goes that stops a recording of `area`. It stays within `monitor`, what the desktop's bars leave
// free of it. All in the same unit.

/// Outside of the area: at its middle, below, above, to the right or to the left, whichever has room first; in the
/// bottom right corner of a monitor that shows nothing of the area; absent where there is no room.
[[nodiscard]] std::optional<QRect> placeOutside(const QRect& area, const QRect& monitor, const QSize& control);

/// In the bottom right corner of what the monitor shows of the area, or of the monitor when that is nothing.
[[nodiscard]] QRect placeInside(const QRect& area, const QRect& monitor, const QSize& control);

}  // namespace Nimbrel::Screencapture
