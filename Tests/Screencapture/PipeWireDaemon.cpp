#include "Screencapture/PipeWireDaemon.h"

#include "Support/UnixSocket.h"

#include <QByteArray>

#include <vector>

namespace Nimbrel::Testing {

namespace {

constexpr auto configuration = R"(
context.properties = { core.daemon = true core.name = pipewire-0 support.dbus = false }
context.spa-libs = { support.* = support/libspa-support }
context.modules = [
  { name = libpipewire-module-protocol-native }
  { name = libpipewire-module-client-node }
  { name = libpipewire-module-access }
  { name = libpipewire-module-link-factory }
]
)";

}  // namespace

PipeWireDaemon::PipeWireDaemon() {
  const auto file = folder_.write("pipewire.conf", configuration);
  qputenv("PIPEWIRE_RUNTIME_DIR", folder_.path().c_str());
  daemon_ = std::make_unique<DesktopClient>(std::vector<std::string>{"pipewire", "-c", file});
  qunsetenv("PIPEWIRE_RUNTIME_DIR");
  waitForListener(socket_);
}

int PipeWireDaemon::connect() const { return connectedSocket(socket_); }

}  // namespace Nimbrel::Testing
