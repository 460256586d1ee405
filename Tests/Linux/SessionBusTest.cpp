#include "Portal/SessionBus.h"

#include "Support/EnvironmentVariable.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

namespace Nimbrel {
namespace {

using Testing::EnvironmentVariable;

/// A socket at that path.
class Listener {
 public:
  explicit Listener(const std::string& path) : socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    EXPECT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  }
  ~Listener() { ::close(socket_); }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

 private:
  int socket_;
};

TEST(SessionBusAddress, IsWhatTheEnvironmentSays) {
  const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", "unix:path=/run/somewhere");
  EXPECT_EQ(SessionBus::address(), "unix:path=/run/somewhere");
}

TEST(SessionBusAddress, IsTheUsualSocketWhereTheEnvironmentSaysNothing) {
  const Testing::TemporaryFolder folder;
  const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
  const EnvironmentVariable runtime("XDG_RUNTIME_DIR", folder.makeFolder("a b"));
  EXPECT_EQ(SessionBus::address(), "") << "nobody listens there";
  const Listener listener(folder.path("a b/bus"));
  EXPECT_EQ(SessionBus::address(), "unix:path=" + folder.path("a%20b/bus"));
}

TEST(SessionBusAddress, AFileInThePlaceOfTheSocketIsNoBus) {
  const Testing::TemporaryFolder folder;
  const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
  const EnvironmentVariable runtime("XDG_RUNTIME_DIR", folder.path());
  folder.write("bus", "");
  EXPECT_EQ(SessionBus::address(), "");
}

}  // namespace
}  // namespace Nimbrel
