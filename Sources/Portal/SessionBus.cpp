#include "Portal/SessionBus.h"

#include <QByteArray>

#include <filesystem>

namespace Nimbrel {

std::string SessionBus::address() {
  auto address = qgetenv("DBUS_SESSION_BUS_ADDRESS").toStdString();
  if (!address.empty() || qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) return address;
  const auto socket = std::filesystem::path(qgetenv("XDG_RUNTIME_DIR").toStdString()) / "bus";
  std::error_code error;
  if (!std::filesystem::is_socket(socket, error)) return {};
  return "unix:path=" + QByteArray::fromStdString(socket.string()).toPercentEncoding("/").toStdString();
}

}  // namespace Nimbrel
