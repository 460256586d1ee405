#include "Linux/Factory.h"

#include "Linux/Authentication/PamOwnerAuthentication.h"
#include "Linux/Desktop/LinuxScreenshotTool.h"
#include "Linux/Files/InotifyFileEvents.h"

namespace Nimbrel {

Services makeServices() {
  Services services;
  services.fileEvents = makeInotifyFileEvents();
  services.screenshotTool = makeLinuxScreenshotTool();
  services.ownerAuthentication = makePamOwnerAuthentication();
  return services;
}

}  // namespace Nimbrel
