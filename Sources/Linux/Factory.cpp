#include "Linux/Factory.h"

#include "Foundation/FilePath.h"
#include "Linux/Authentication/PamOwnerAuthentication.h"
#include "Linux/Capture/ScreenCaptureProcess.h"
#include "Linux/Desktop/LinuxScreenshotTool.h"
#include "Linux/Desktop/PortalAppearance.h"
#include "Linux/Files/DesktopTrash.h"
#include "Linux/Files/InotifyFileEvents.h"
#include "Linux/Reading/ReaderProcess.h"
#include "Linux/X11/X11FrontApplication.h"
#include "Linux/X11/XcbConnection.h"
#include "Platform/UserFolders.h"

#include <memory>

namespace Nimbrel {

namespace {

/// The user's folder for data, in which ours lies, holds the Trash as well.
std::optional<std::string> homeTrash() {
  const auto folders = UserFolders::ofCurrentUser();
  if (!folders) return std::nullopt;
  return FilePath::join(FilePath::folder(folders->applicationSupport), "Trash");
}

/// Whether the X server knows all windows, which it does not where it only serves a Wayland session's older programs.
bool isX11Session() {
  return !qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
         qgetenv("XDG_SESSION_TYPE") != "wayland";
}

}  // namespace

Services makeServices(const std::string& ownIdentifier) {
  Services services;
  services.fileEvents = makeInotifyFileEvents();
  services.screenshotTool = makeLinuxScreenshotTool();
  services.ownerAuthentication = makePamOwnerAuthentication();
  services.pictureReader = makeReaderProcess();
  services.trash = makeDesktopTrash(homeTrash());
  services.screenCaptureTool = makeScreenCaptureProcess();
  services.desktopAppearance = makePortalAppearance();
  if (isX11Session()) {
    services.frontApplication = makeX11FrontApplication(std::make_shared<XcbConnection>(), ownIdentifier);
  }
  return services;
}

}  // namespace Nimbrel
