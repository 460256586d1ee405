#include "Linux/Files/CopyingMove.h"

#include "Foundation/FilePath.h"
#include "Linux/Files/FileDescriptor.h"
#include "Linux/Files/Flushing.h"
#include "Linux/Files/HiddenFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <vector>

namespace Nimbrel {

namespace {

using Facts = struct stat;

int copyContent(int from, HiddenFile& to) {
  std::vector<char> buffer(1 << 18);
  while (true) {
    const auto length = ::read(from, buffer.data(), buffer.size());
    if (length == 0) return 0;
    if (length < 0 && errno == EINTR) continue;
    if (length < 0) return errno;
    if (const int error = to.write(buffer.data(), static_cast<std::size_t>(length)); error != 0) return error;
  }
}

/// What the target cannot keep is no reason to leave the file where it is.
void copyAttributes(int from, int to) {
  std::vector<char> names(XATTR_LIST_MAX);
  std::vector<char> value(XATTR_SIZE_MAX);
  const auto length = ::flistxattr(from, names.data(), names.size());
  for (const char* name = names.data(); length > 0 && name < names.data() + length; name += std::strlen(name) + 1) {
    const auto size = ::fgetxattr(from, name, value.data(), value.size());
    if (size >= 0) ::fsetxattr(to, name, value.data(), static_cast<std::size_t>(size), 0);
  }
}

/// The same for owner and permissions; times every file system keeps in some way.
void copyFacts(const Facts& facts, int to) {
  if (facts.st_uid != ::geteuid() || facts.st_gid != ::getegid()) {
    [[maybe_unused]] const int changed = ::fchown(to, facts.st_uid, facts.st_gid);
  }
  ::fchmod(to, facts.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO));
  const std::array<timespec, 2> times{facts.st_atim, facts.st_mtim};
  ::futimens(to, times.data());
}

/// Whether somebody has written to the file, or put another one in its place.
bool hasChanged(const Facts& former, const std::string& path) {
  Facts facts{};
  return ::lstat(path.c_str(), &facts) != 0 || facts.st_dev != former.st_dev || facts.st_ino != former.st_ino ||
         facts.st_size != former.st_size || facts.st_mtim.tv_sec != former.st_mtim.tv_sec ||
         facts.st_mtim.tv_nsec != former.st_mtim.tv_nsec;
}

int removeSource(const std::string& from, const std::string& to) {
  if (::unlink(from.c_str()) == 0) return 0;
  const int error = errno;
  ::unlink(to.c_str());
  return error;
}

int moveLink(const std::string& from, const std::string& to) {
  std::array<char, PATH_MAX> target{};
  const auto length = ::readlink(from.c_str(), target.data(), target.size());
  if (length < 0) return errno;
  const std::string copied(target.data(), static_cast<std::size_t>(length));
  if (::symlink(copied.c_str(), to.c_str()) != 0) return errno;
  return removeSource(from, to);
}

int moveFile(const std::string& from, const std::string& to) {
  const FileDescriptor source(::open(from.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!source.isOpen()) return errno;
  Facts facts{};
  if (::fstat(source.number(), &facts) != 0) return errno;
  if (!S_ISREG(facts.st_mode)) return EISDIR;

  const auto folder = std::string(FilePath::folder(to));
  HiddenFile copy(folder, HiddenFile::Access::owner);
  if (copy.error() != 0) return copy.error();
  if (const int error = copyContent(source.number(), copy); error != 0) return error;
  copyAttributes(source.number(), copy.number());
  copyFacts(facts, copy.number());
  if (::fsync(copy.number()) != 0) return errno;
  if (hasChanged(facts, from)) return EBUSY;

  if (const int error = copy.rename(to); error != 0) return error;
  if (const int error = flushFolder(folder); error != 0) {
    ::unlink(to.c_str());
    return error;
  }
  return removeSource(from, to);
}

}  // namespace

int moveByCopying(const std::string& from, const std::string& to) {
  Facts facts{};
  if (::lstat(from.c_str(), &facts) != 0) return errno;
  return S_ISLNK(facts.st_mode) ? moveLink(from, to) : moveFile(from, to);
}

}  // namespace Nimbrel
