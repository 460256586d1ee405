#pragma once

#include "Screencapture/Capture.h"

#include <memory>

namespace Nimbrel::Screencapture {

/// Has the desktop portal take a picture. What is to be selected, it lets the user choose in its own way; the main
/// screen comes without a question where the desktop allows that, and else the user is asked. The portal may give more
/// than one screen or a part of it then.
[[nodiscard]] std::unique_ptr<Capture> takePortalScreenshot(const CaptureRequest& request, Capture::Then then);

}  // namespace Nimbrel::Screencapture
