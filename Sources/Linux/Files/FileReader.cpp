#include "Platform/FileReader.h"

#include "Linux/Files/ErrorWords.h"
#include "Linux/Files/FileDescriptor.h"
#include "Linux/Files/FileTime.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace Nimbrel {

struct FileReader::State {
  FileDescriptor file;
  struct stat facts {};
};

Result<FileReader> FileReader::open(const std::string& path) {
  if (path.find('\0') != std::string::npos) return Error{wordsFor(EINVAL)};
  auto state = std::make_unique<State>();
  // Without O_NONBLOCK a pipe would be waited for until somebody writes to it.
  state->file = FileDescriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (!state->file.isOpen() || ::fstat(state->file.number(), &state->facts) != 0) return Error{wordsFor(errno)};
  if (!S_ISREG(state->facts.st_mode)) return Error{wordsFor(EISDIR)};
  return FileReader(std::move(state));
}

FileReader::FileReader(std::unique_ptr<State> state) : state_(std::move(state)) {}
FileReader::~FileReader() = default;
FileReader::FileReader(FileReader&& other) noexcept = default;
FileReader& FileReader::operator=(FileReader&& other) noexcept = default;

std::uint64_t FileReader::size() const { return static_cast<std::uint64_t>(state_->facts.st_size); }

Timestamp FileReader::modified() const { return momentOf(state_->facts.st_mtim); }

bool FileReader::hasChanged() const {
  const auto& former = state_->facts;
  struct stat facts {};
  return ::fstat(state_->file.number(), &facts) != 0 || facts.st_size != former.st_size ||
         facts.st_mtim.tv_sec != former.st_mtim.tv_sec || facts.st_mtim.tv_nsec != former.st_mtim.tv_nsec;
}

Result<std::size_t> FileReader::read(std::span<char> room) {
  std::size_t count = 0;
  while (count < room.size()) {
    const auto length = ::read(state_->file.number(), room.data() + count, room.size() - count);
    if (length == 0) break;
    if (length < 0 && errno == EINTR) continue;
    if (length < 0) return Error{wordsFor(errno)};
    count += static_cast<std::size_t>(length);
  }
  return count;
}

}  // namespace Nimbrel
