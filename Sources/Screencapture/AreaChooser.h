#pragma once

#include "Foundation/Result.h"
#include "Screencapture/CaptureRequest.h"

#include <QObject>
#include <QRect>

#include <functional>
#include <optional>

namespace Nimbrel::Screencapture {

/// Lets the user choose a part of an X11 screen, on a picture of it that is frozen and dimmed meanwhile; main screen is
/// not chosen but told. `then` gets pixels of the root window within it, nothing when the user cancelled, an error when
/// keyboard and pointer cannot be had; in a later turn of the event loop, once the overlay is off the screen. Nothing
/// comes once `context` is gone. Main thread.
using AreaChosen = std::function<void(Result<std::optional<QRect>> area)>;
void chooseArea(QObject* context, CaptureRequest::Subject subject, AreaChosen then);

}  // namespace Nimbrel::Screencapture
