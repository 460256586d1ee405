#include "Platform/FolderLock.h"

#include "Linux/Files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace Nimbrel {

namespace {

/// The system's own waiting could not be ended by a stop token, so the folder is asked for again and again.
constexpr std::chrono::milliseconds untilNextLook{100};

/// Holds the folder, unless somebody else does.
bool isHeldByOther(int folder) {
  while (::flock(folder, LOCK_EX | LOCK_NB) != 0) {
    if (errno != EINTR) return errno == EWOULDBLOCK;
  }
  return false;
}

/// False when `stop` was asked for.
bool pause(const std::stop_token& stop) {
  std::mutex mutex;
  std::unique_lock lock(mutex);
  std::condition_variable_any never;
  never.wait_for(lock, stop, untilNextLook, [] { return false; });
  return !stop.stop_requested();
}

}  // namespace

struct FolderLock::State {
  FileDescriptor folder;
};

std::optional<FolderLock> FolderLock::take(const std::string& folder, const std::stop_token& stop) {
  auto state = std::make_unique<State>();
  state->folder = FileDescriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  while (isHeldByOther(state->folder.number())) {
    if (!pause(stop)) return std::nullopt;
  }
  return FolderLock(std::move(state));
}

FolderLock::FolderLock(std::unique_ptr<State> state) : state_(std::move(state)) {}
FolderLock::~FolderLock() = default;
FolderLock::FolderLock(FolderLock&& other) noexcept = default;
FolderLock& FolderLock::operator=(FolderLock&& other) noexcept = default;

}  // namespace Nimbrel
