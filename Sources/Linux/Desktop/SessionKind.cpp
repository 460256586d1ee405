#include "Linux/Desktop/SessionKind.h"

#include <QByteArray>

namespace Nimbrel {

SessionKind sessionKind() {
  if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland") {
    return SessionKind::wayland;
  }
  return qEnvironmentVariableIsEmpty("DISPLAY") ? SessionKind::none : SessionKind::x11;
}

}  // namespace Nimbrel
