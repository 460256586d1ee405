#include "Support/TestEnvironment.h"

namespace Nimbrel::Testing {

TestEnvironment::TestEnvironment() {
  qputenv("LC_ALL", "C.UTF-8");
  qputenv("TZ", "UTC");
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const auto home = home_.path().toLocal8Bit();
  qputenv("HOME", home);
  qputenv("XDG_DATA_HOME", home + "/.local/share");
  qputenv("XDG_CONFIG_HOME", home + "/.config");
  qputenv("XDG_CACHE_HOME", home + "/.cache");
  qputenv("XDG_RUNTIME_DIR", home);
  for (const char* variable :
       {"XDG_CURRENT_DESKTOP", "XDG_SESSION_TYPE", "DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"}) {
    qunsetenv(variable);
  }
}

}  // namespace Nimbrel::Testing
