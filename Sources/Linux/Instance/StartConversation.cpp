#include "Linux/Instance/StartConversation.h"

#include "Linux/Instance/StartMessage.h"
#include "Linux/Instance/StartSocket.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

namespace Nimbrel {

StartConversation::StartConversation(FileDescriptor connection, QObject* parent)
    : QObject(parent), connection_(std::move(connection)), notifier_(connection_.number(), QSocketNotifier::Read) {
  connect(&notifier_, &QSocketNotifier::activated, this, &StartConversation::read);
}

void StartConversation::read() {
  std::array<char, 4096> piece{};
  for (;;) {
    const auto count = ::recv(connection_.number(), piece.data(), piece.size(), 0);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return;
    if (count <= 0) break;
    message_.append(piece.data(), count);
    if (message_.size() > StartMessage::longest) return end();
  }
  if (const auto request = StartMessage::decode(message_)) {
    // Few enough bytes for any buffer.
    ::send(connection_.number(), StartSocket::accepted, std::strlen(StartSocket::accepted), MSG_NOSIGNAL);
    Q_EMIT came(*request);
  }
  end();
}

void StartConversation::end() {
  notifier_.setEnabled(false);
  connection_.close();
  deleteLater();
}

}  // namespace Nimbrel
