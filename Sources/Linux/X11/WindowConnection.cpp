#include "Linux/X11/WindowConnection.h"

#include <QGuiApplication>

namespace Nimbrel {

xcb_connection_t* connectionOfWindows() {
  if (qGuiApp == nullptr) return nullptr;
  const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return application != nullptr ? application->connection() : nullptr;
}

}  // namespace Nimbrel
