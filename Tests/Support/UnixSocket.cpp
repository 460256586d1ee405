#include "Support/UnixSocket.h"

#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>

namespace Nimbrel::Testing {

int connectedSocket(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof(address.sun_path)) return -1;
  std::ranges::copy(path, address.sun_path);
  const int number = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (::connect(number, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0) return number;
  ::close(number);
  return -1;
}

void waitForListener(const std::string& path) {
  const auto isListenedAt = [&] {
    const int number = connectedSocket(path);
    if (number >= 0) ::close(number);
    return number >= 0;
  };
  EXPECT_TRUE(waitUntil(isListenedAt)) << "nobody listens at " << path;
}

}  // namespace Nimbrel::Testing
