#pragma once

#include "Screencapture/Capture.h"
#include "Screencapture/CaptureRequest.h"

#include <memory>

namespace Nimbrel::Screencapture {

/// Takes a picture of the X11 screen that the environment names.
[[nodiscard]] std::unique_ptr<Capture> takePictureOnX11(const CaptureRequest& request, Capture::Then then);

}  // namespace Nimbrel::Screencapture
