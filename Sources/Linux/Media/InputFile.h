#pragma once

#include "Foundation/Result.h"
#include "Linux/Media/AvHandles.h"

#include <string>

namespace Nimbrel::Media {

/// Opens a movie and finds out about its tracks. Files that would have others opened, be it over the network, are
/// refused, as is what is no file.
[[nodiscard]] Result<InputFormat> openInput(const std::string& path);

}  // namespace Nimbrel::Media
