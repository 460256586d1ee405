#pragma once

#include "Platform/FileEvents.h"
#include "Platform/ScreenshotTool.h"

#include <memory>

namespace Nimbrel {

/// The services of the operating system that a Store works with. None is ever null; the members given here do nothing.
struct Services {
  std::unique_ptr<FileEvents> fileEvents = std::make_unique<NullFileEvents>();
  std::unique_ptr<ScreenshotTool> screenshotTool = std::make_unique<NullScreenshotTool>();
};

}  // namespace Nimbrel
