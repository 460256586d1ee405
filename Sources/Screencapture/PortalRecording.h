#pragma once

#include "Screencapture/Capture.h"

#include <memory>

namespace Nimbrel::Screencapture {

/// Records what the user shows us through the desktop portal, with sound where a source is, until interrupt(), a click
/// on the stop control, or the desktop's own way to end it; then the movie is finished. Before the first frame there is
/// none, and an interrupt cancels. A screen or window that changes its size keeps the first one in the movie. Frames
/// are taken and encoded in a thread of their own. Needs the application object of widgets.
[[nodiscard]] std::unique_ptr<Capture> recordPortalScreenCast(const CaptureRequest& request, Capture::Then then);

}  // namespace Nimbrel::Screencapture
