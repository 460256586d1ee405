#include "Platform/Display.h"

#include <QtGlobal>

#include <xcb/xcb.h>

namespace Nimbrel {

bool Display::isThere() {
  if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) return true;
  if (qEnvironmentVariableIsEmpty("DISPLAY")) return false;
  // The variable outlives the server, as in a terminal that was left open.
  auto* connection = xcb_connect(nullptr, nullptr);
  const bool isUp = xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  return isUp;
}

}  // namespace Nimbrel
