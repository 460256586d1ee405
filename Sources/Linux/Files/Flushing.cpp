#include "Linux/Files/Flushing.h"

#include "Linux/Files/FileDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace Nimbrel {

int flush(int file) {
  while (::fsync(file) != 0) {
    if (errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP) return 0;
    if (errno != EINTR) return errno;
  }
  return 0;
}

int flushFolder(const std::string& path) {
  const FileDescriptor folder(::open(path.empty() ? "." : path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // One may write to a folder that one must not read.
  if (!folder.isOpen()) return errno == EACCES ? 0 : errno;
  return flush(folder.number());
}

}  // namespace Nimbrel
