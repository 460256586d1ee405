#pragma once

#include "Screencapture/Capture.h"
#include "Screencapture/CaptureRequest.h"

#include <memory>

namespace Nimbrel::Screencapture {

/// Records the X11 screen that the environment names, or the part of it that the user selects first, until it is
/// interrupted or stopped by its control. Needs the application object of widgets.
[[nodiscard]] std::unique_ptr<Capture> recordMovieOnX11(const CaptureRequest& request, Capture::Then then);

}  // namespace Nimbrel::Screencapture
