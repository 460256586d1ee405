#include "Linux/Factory.h"

#include "Linux/Authentication/PamOwnerAuthentication.h"
#include "Linux/Desktop/LinuxScreenshotTool.h"
#include "Linux/Files/InotifyFileEvents.h"
#include "Linux/Reading/ReaderProcess.h"

namespace Nimbrel {

Services makeServices() {
  Services services;
  services.fileEvents = makeInotifyFileEvents();
  services.screenshotTool = makeLinuxScreenshotTool();
  services.ownerAuthentication = makePamOwnerAuthentication();
  services.pictureReader = makeReaderProcess();
  return services;
}

}  // namespace Nimbrel
