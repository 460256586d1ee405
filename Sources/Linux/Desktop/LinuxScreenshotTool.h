#pragma once

#include "Platform/ScreenshotTool.h"

#include <memory>

namespace Nimbrel {

/// Reads the settings of the screenshot tool that belongs to the running desktop. Only what the user has set counts,
/// not what the tool does by itself, and only an absolute path or one below the home folder.
[[nodiscard]] std::unique_ptr<ScreenshotTool> makeLinuxScreenshotTool();

}  // namespace Nimbrel
