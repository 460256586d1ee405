#include "Support/SessionBus.h"

#include "Support/UnixSocket.h"

#include <QByteArray>

#include <vector>

namespace Nimbrel::Testing {

namespace {

std::string configuration(const std::string& address, const std::string& services) {
  const auto folder = services.empty() ? std::string() : "  <servicedir>" + services + "</servicedir>\n";
  return R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>)" +
         address + "</listen>\n" + folder + R"(  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";
}

}  // namespace

SessionBus::SessionBus(const std::string& services) : address_("unix:path=" + folder_.path("bus")) {
  const auto file = folder_.write("bus.conf", configuration(address_, services));
  daemon_ = std::make_unique<DesktopClient>(
      std::vector<std::string>{"dbus-daemon", "--nofork", "--nopidfile", "--config-file=" + file});
  waitForListener(folder_.path("bus"));
  qputenv("DBUS_SESSION_BUS_ADDRESS", address_.c_str());
}

SessionBus::~SessionBus() { qunsetenv("DBUS_SESSION_BUS_ADDRESS"); }

}  // namespace Nimbrel::Testing
