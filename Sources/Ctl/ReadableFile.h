#pragma once

#include "Foundation/Result.h"

#include <string>

namespace Nimbrel::Ctl {

/// The absolute path of a file that is there and can be read. Links stay as they are, as a scan sees them, unless the
/// path leads back out of one.
[[nodiscard]] Result<std::string> readableFile(const std::string& name);

/// The absolute path of a file that can be made: nothing is there, its folder is.
[[nodiscard]] Result<std::string> newFile(const std::string& name);

}  // namespace Nimbrel::Ctl
