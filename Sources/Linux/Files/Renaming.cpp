#include "Linux/Files/Renaming.h"

#include "Linux/Files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace Nimbrel {

namespace {

int renameByLink(const std::string& from, const std::string& to) {
  if (::link(from.c_str(), to.c_str()) != 0) return errno;
  if (::unlink(from.c_str()) == 0) return 0;
  const int error = errno;
  ::unlink(to.c_str());
  return error;
}

int renameOverPlaceholder(const std::string& from, const std::string& to) {
  // Nothing may stand there alone while there is nothing to take its place.
  struct stat facts {};
  if (::lstat(from.c_str(), &facts) != 0) return errno;
  if (!FileDescriptor(::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600)).isOpen()) return errno;
  if (::rename(from.c_str(), to.c_str()) == 0) return 0;
  const int error = errno;
  ::unlink(to.c_str());
  return error;
}

bool isUnsupported(int error) { return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP; }

/// EPERM and EMLINK are what file systems without second names say, and some servers.
bool isWithoutLinks(int error) { return isUnsupported(error) || error == EPERM || error == EMLINK; }

}  // namespace

int checkMovable(const std::string& path) {
  struct stat facts {};
  if (::lstat(path.c_str(), &facts) != 0) return errno;
  return S_ISREG(facts.st_mode) || S_ISLNK(facts.st_mode) ? 0 : EISDIR;
}

int renameWithoutReplacing(const std::string& from, const std::string& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
  if (!isUnsupported(errno)) return errno;
  const int error = renameByLink(from, to);
  return isWithoutLinks(error) ? renameOverPlaceholder(from, to) : error;
}

}  // namespace Nimbrel
