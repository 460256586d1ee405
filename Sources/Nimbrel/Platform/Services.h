#pragma once

#include "Platform/DesktopAppearance.h"
#include "Platform/FileEvents.h"
#include "Platform/FrontApplication.h"
#include "Platform/Hotkeys.h"
#include "Platform/InstalledApplications.h"
#include "Platform/OwnerAuthentication.h"
#include "Platform/Pasteboard.h"
#include "Platform/PictureReader.h"
#include "Platform/ScreenCaptureTool.h"
#include "Platform/ScreenshotTool.h"
#include "Platform/Trash.h"
#include "Platform/WindowActivation.h"
#include "Platform/WindowFocus.h"
#include "Platform/WindowStacking.h"
#include "Platform/Workspace.h"

#include <memory>

namespace Nimbrel {

/// The services of the operating system that a Store works with. None is ever null; the members given here do nothing.
struct Services {
  std::unique_ptr<FileEvents> fileEvents = std::make_unique<NullFileEvents>();
  std::unique_ptr<ScreenshotTool> screenshotTool = std::make_unique<NullScreenshotTool>();
  std::unique_ptr<PictureReader> pictureReader = std::make_unique<NullPictureReader>();
  std::unique_ptr<Trash> trash = std::make_unique<NullTrash>();
  std::unique_ptr<OwnerAuthentication> ownerAuthentication = std::make_unique<NullOwnerAuthentication>();
  std::unique_ptr<FrontApplication> frontApplication = std::make_unique<NullFrontApplication>();
  std::unique_ptr<HotkeyService> hotkeys = std::make_unique<NullHotkeyService>();
  std::unique_ptr<ScreenCaptureTool> screenCaptureTool = std::make_unique<NullScreenCaptureTool>();
  std::unique_ptr<Pasteboard> pasteboard = std::make_unique<NullPasteboard>();
  std::unique_ptr<Workspace> workspace = std::make_unique<NullWorkspace>();
  std::unique_ptr<InstalledApplications> installedApplications = std::make_unique<NullInstalledApplications>();
  std::unique_ptr<DesktopAppearance> desktopAppearance = std::make_unique<NullDesktopAppearance>();
  std::unique_ptr<WindowActivation> windowActivation = std::make_unique<NullWindowActivation>();
  std::unique_ptr<WindowStacking> windowStacking = std::make_unique<NullWindowStacking>();
  std::unique_ptr<WindowFocus> windowFocus = std::make_unique<NullWindowFocus>();
};

}  // namespace Nimbrel
