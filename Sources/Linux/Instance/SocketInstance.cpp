#include "Linux/Instance/SocketInstance.h"

#include "Linux/Instance/StartConversation.h"
#include "Linux/Instance/StartMessage.h"
#include "Linux/Instance/StartSocket.h"

#include <sys/file.h>
#include <sys/stat.h>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>
#include <utility>

namespace Nimbrel {

namespace {

/// Between its lock and its socket the first one needs a moment, and none tells when that has passed.
constexpr std::chrono::milliseconds untilNextLook{20};
constexpr std::chrono::seconds longestLook{3};
constexpr qsizetype mostConversations = 16;

}  // namespace

SocketInstance::SocketInstance(std::string folder, std::string name, SingleInstance::Handler onRequest)
    : folderPath_(std::move(folder)), name_(std::move(name)), onRequest_(std::move(onRequest)) {}

SocketInstance::~SocketInstance() {
  // While the lock is held, so that it is not another's.
  if (listener_.isOpen()) ::unlinkat(folder_.number(), name_.c_str(), 0);
}

SingleInstance::Place SocketInstance::claim(const StartRequest& request) {
  std::error_code error;
  std::filesystem::create_directories(folderPath_, error);
  folder_ = FileDescriptor(::open(folderPath_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  const auto end = std::chrono::steady_clock::now() + longestLook;
  while (!takeLock()) {
    if (const auto connection = StartSocket::connect(folder_, name_); connection.isOpen()) {
      const bool isTaken = StartSocket::ask(connection, StartMessage::encode(request));
      return isTaken ? SingleInstance::Place::HandedOver : SingleInstance::Place::Unanswered;
    }
    if (std::chrono::steady_clock::now() > end) return SingleInstance::Place::Unanswered;
    std::this_thread::sleep_for(untilNextLook);
  }
  listen();
  return SingleInstance::Place::First;
}

bool SocketInstance::takeLock() {
  constexpr mode_t ofOwner = S_IRUSR | S_IWUSR;
  lock_ = FileDescriptor(
      ::openat(folder_.number(), (name_ + ".lock").c_str(), O_CREAT | O_RDWR | O_NOFOLLOW | O_CLOEXEC, ofOwner));
  while (lock_.isOpen() && ::flock(lock_.number(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EINTR) return errno != EWOULDBLOCK;
  }
  return true;
}

void SocketInstance::listen() {
  if (!lock_.isOpen()) return;
  listener_ = StartSocket::listen(folder_, name_);
  if (!listener_.isOpen()) return;
  notifier_ = std::make_unique<QSocketNotifier>(listener_.number(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, &SocketInstance::meet);
}

void SocketInstance::meet() {
  for (;;) {
    auto connection = StartSocket::accept(listener_);
    if (!connection.isOpen()) return;
    // More than that want something else; they are sent away with the connection.
    if (findChildren<StartConversation*>().size() >= mostConversations) continue;
    auto* conversation = new StartConversation(std::move(connection), this);
    connect(conversation, &StartConversation::came, this, [this](const StartRequest& request) { onRequest_(request); });
  }
}

}  // namespace Nimbrel
