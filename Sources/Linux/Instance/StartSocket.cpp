#include "Linux/Instance/StartSocket.h"

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string_view>

namespace Nimbrel {

namespace {

constexpr int mostWaiting = 16;
/// It may be reading a large catalogue.
constexpr timeval longestAnswer{.tv_sec = 10, .tv_usec = 0};

/// By way of the open folder, since its own path may be longer than an address has room for.
std::optional<sockaddr_un> addressOf(const FileDescriptor& folder, const std::string& name) {
  const auto path = "/proc/self/fd/" + std::to_string(folder.number()) + "/" + name;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) return std::nullopt;
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  return address;
}

const sockaddr* generic(const sockaddr_un& address) { return reinterpret_cast<const sockaddr*>(&address); }

bool isOwnUser(int connection) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
}

bool sendAll(int connection, std::string_view text) {
  while (!text.empty()) {
    const auto sent = ::send(connection, text.data(), text.size(), MSG_NOSIGNAL);
    if (sent < 0 && errno == EINTR) continue;
    if (sent <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

}  // namespace

FileDescriptor StartSocket::listen(const FileDescriptor& folder, const std::string& name) {
  FileDescriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  const auto address = addressOf(folder, name);
  if (!listener.isOpen() || !address) return {};
  // Left by a process that was killed.
  ::unlinkat(folder.number(), name.c_str(), 0);
  if (::bind(listener.number(), generic(*address), sizeof *address) != 0) return {};
  if (::listen(listener.number(), mostWaiting) != 0) return {};
  return listener;
}

FileDescriptor StartSocket::accept(const FileDescriptor& listener) {
  for (;;) {
    FileDescriptor connection(::accept4(listener.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!connection.isOpen() && (errno == EINTR || errno == ECONNABORTED)) continue;
    if (!connection.isOpen() || isOwnUser(connection.number())) return connection;
  }
}

FileDescriptor StartSocket::connect(const FileDescriptor& folder, const std::string& name) {
  FileDescriptor connection(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const auto address = addressOf(folder, name);
  if (!connection.isOpen() || !address) return {};
  for (const int option : {SO_SNDTIMEO, SO_RCVTIMEO}) {
    ::setsockopt(connection.number(), SOL_SOCKET, option, &longestAnswer, sizeof longestAnswer);
  }
  if (::connect(connection.number(), generic(*address), sizeof *address) != 0) return {};
  if (!isOwnUser(connection.number())) return {};
  return connection;
}

bool StartSocket::ask(const FileDescriptor& connection, const QByteArray& message) {
  const std::string_view text(message.constData(), static_cast<std::size_t>(message.size()));
  if (!sendAll(connection.number(), text) || ::shutdown(connection.number(), SHUT_WR) != 0) return false;
  std::array<char, 16> answer{};
  std::string whole;
  for (;;) {
    const auto count = ::recv(connection.number(), answer.data(), answer.size(), 0);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return whole == accepted;
    whole.append(answer.data(), static_cast<std::size_t>(count));
    if (whole.size() > answer.size()) return false;
  }
}

}  // namespace Nimbrel
