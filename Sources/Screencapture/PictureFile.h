#pragma once

#include "Foundation/Result.h"
#include "Screencapture/CaptureRequest.h"

#include <QByteArray>
#include <QImage>

#include <optional>
#include <string>

namespace Nimbrel::Screencapture {

/// Writes a screenshot as PNG to a path that nothing stands at, marked as a capture of its subject; absent when done.
/// It is written under a hidden name in the same folder and gets its name when it is whole and on the disk; nothing is
/// replaced, and on failure nothing is left. Main thread.
[[nodiscard]] std::optional<Error> writePicture(const QImage& picture, CaptureRequest::Subject subject,
                                                const std::string& path);

/// The same for a picture that another program has made: the PNG as it stands, with all that it says beside its pixels.
[[nodiscard]] std::optional<Error> adoptPicture(const QByteArray& png, CaptureRequest::Subject subject,
                                                const std::string& path);

}  // namespace Nimbrel::Screencapture
