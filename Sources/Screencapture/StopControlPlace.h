#pragma once

#include <QRect>
#include <QSize>

namespace Nimbrel::Screencapture {

/// Where the control goes that stops a recording of `area`: at its middle outside of it, below, above, to the right or
/// to the left, whichever has room first; inside its bottom right corner when none has. Always within `monitor`, what
/// the desktop's bars leave free of it. All in the same unit.
[[nodiscard]] QRect stopControlPlace(const QRect& area, const QRect& monitor, const QSize& control);

}  // namespace Nimbrel::Screencapture
