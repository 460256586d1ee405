#pragma once

#include "Foundation/Result.h"
#include "Screencapture/CaptureRequest.h"

#include <QString>

#include <filesystem>
#include <optional>
#include <string>

namespace Nimbrel::Screencapture {

/// The path that a "file:" address of this machine means, byte by byte; an error for any other address.
[[nodiscard]] Result<std::string> localPath(const QString& address);

/// Makes the screenshot out of the picture that the portal has written for a request made at `asked`: copied as it
/// stands when it is PNG, else encoded anew. Absent when done.
///
/// The portal's own file goes only where nobody keeps anything, in the folders for temporary and cached files. Some
/// desktops write it among the user's pictures instead. There it stays, since it may be what the user expects to find,
/// but marked as no screen capture, so that the catalogue does not show the same picture twice. A file that is older
/// than the request is none of our business.
[[nodiscard]] std::optional<Error> takePortalPicture(const QString& address, std::filesystem::file_time_type asked,
                                                     const CaptureRequest& request);

}  // namespace Nimbrel::Screencapture
