#include "Linux/Factory.h"

#include "Linux/Desktop/LinuxScreenshotTool.h"
#include "Linux/Files/InotifyFileEvents.h"

namespace Nimbrel {

Services makeServices() {
  Services services;
  services.fileEvents = makeInotifyFileEvents();
  services.screenshotTool = makeLinuxScreenshotTool();
  return services;
}

}  // namespace Nimbrel
