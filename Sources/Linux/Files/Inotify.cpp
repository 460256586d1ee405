#include "Linux/Files/Inotify.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace Nimbrel {

Inotify::Added Inotify::add(const std::string& folder, std::uint32_t mask, Links links) {
  if (folder.find('\0') != std::string::npos) return {-1, ENOENT};
  if (const int error = open(); error != 0) return {-1, error};
  const std::uint32_t flags = IN_ONLYDIR | IN_MASK_ADD | (links == Links::Refuse ? IN_DONT_FOLLOW : 0U);
  const int watch = ::inotify_add_watch(queue_.number(), folder.c_str(), mask | flags);
  return watch >= 0 ? Added{watch, 0} : Added{-1, errno};
}

void Inotify::remove(int watch) {
  // Fails for a watch that the kernel has removed by itself, which is as well.
  if (queue_.isOpen()) ::inotify_rm_watch(queue_.number(), watch);
}

void Inotify::read(const std::function<void(const Event& event)>& visit) {
  alignas(inotify_event) std::array<char, 65536> buffer;
  if (!queue_.isOpen()) return;
  const ssize_t length = ::read(queue_.number(), buffer.data(), buffer.size());
  for (ssize_t offset = 0; offset < length;) {
    inotify_event event{};
    std::memcpy(&event, buffer.data() + offset, sizeof event);
    // The kernel pads names with zeros.
    const char* name = buffer.data() + offset + sizeof event;
    visit({event.wd, event.mask, std::string_view(name, ::strnlen(name, event.len))});
    offset += static_cast<ssize_t>(sizeof event + event.len);
  }
}

void Inotify::close() {
  notifier_.reset();
  queue_.close();
}

int Inotify::open() {
  if (queue_.isOpen()) return 0;
  queue_ = FileDescriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (!queue_.isOpen()) return errno;
  notifier_ = std::make_unique<QSocketNotifier>(queue_.number(), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { onReadable_(); });
  return 0;
}

}  // namespace Nimbrel
