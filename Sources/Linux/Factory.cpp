#include "Linux/Factory.h"

#include "Linux/Authentication/PamOwnerAuthentication.h"
#include "Foundation/FilePath.h"
#include "Linux/Desktop/LinuxScreenshotTool.h"
#include "Linux/Files/DesktopTrash.h"
#include "Linux/Files/InotifyFileEvents.h"
#include "Linux/Reading/ReaderProcess.h"
#include "Platform/UserFolders.h"

namespace Nimbrel {

namespace {

/// The user's folder for data, in which ours lies, holds the Trash as well.
std::optional<std::string> homeTrash() {
  const auto folders = UserFolders::ofCurrentUser();
  if (!folders) return std::nullopt;
  return FilePath::join(FilePath::folder(folders->applicationSupport), "Trash");
}

}  // namespace

Services makeServices() {
  Services services;
  services.fileEvents = makeInotifyFileEvents();
  services.screenshotTool = makeLinuxScreenshotTool();
  services.ownerAuthentication = makePamOwnerAuthentication();
  services.pictureReader = makeReaderProcess();
  services.trash = makeDesktopTrash(homeTrash());
  return services;
}

}  // namespace Nimbrel
