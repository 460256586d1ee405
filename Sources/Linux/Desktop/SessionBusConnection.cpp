#include "Linux/Desktop/SessionBusConnection.h"

namespace Nimbrel {

GLibObject<GDBusConnection> connectToSessionBus() {
  const GLibText address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  // It would start a bus on which nobody is.
  if (!address || g_str_has_prefix(address.get(), "autolaunch:") != FALSE) return nullptr;
  constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                           G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  return GLibObject<GDBusConnection>(
      g_dbus_connection_new_for_address_sync(address.get(), flags, nullptr, nullptr, nullptr));
}

}  // namespace Nimbrel
