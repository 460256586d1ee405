#include "Linux/Files/TrashFolder.h"

#include "Foundation/FilePath.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace Nimbrel {

namespace {

constexpr mode_t forUserAlone = 0700;

int makeFolder(const std::string& path) {
  return ::mkdir(path.c_str(), forUserAlone) == 0 || errno == EEXIST ? 0 : errno;
}

/// A folder in a place that others may write to: it must be ours, and no link to elsewhere.
int makeOwnFolder(const std::string& path) {
  if (const int error = makeFolder(path); error != 0) return error;
  struct stat facts {};
  if (::lstat(path.c_str(), &facts) != 0) return errno;
  if (!S_ISDIR(facts.st_mode)) return ENOTDIR;
  return facts.st_uid == ::getuid() ? 0 : EACCES;
}

int prepareOwnTrash(const std::string& path) {
  const int error = makeOwnFolder(path);
  return error != 0 ? error : prepareTrash(path);
}

/// Only with the sticky bit can nobody delete or rename the folder of another user.
bool isTrustworthy(const std::string& path) {
  struct stat facts {};
  return ::lstat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) && (facts.st_mode & S_ISVTX) != 0;
}

bool isOnDeviceOf(const std::string& folder, const std::string& other) {
  struct stat one {};
  struct stat two {};
  return ::lstat(folder.c_str(), &one) == 0 && ::lstat(other.c_str(), &two) == 0 && one.st_dev == two.st_dev;
}

/// What is mounted twice has one device and yet two beginnings, between which nothing can be renamed.
bool isMountRoot(const std::string& folder) {
  struct statx facts {};
  if (::statx(AT_FDCWD, folder.c_str(), AT_SYMLINK_NOFOLLOW, 0, &facts) != 0) return false;
  if ((facts.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0) {
    return (facts.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
  }
  return !isOnDeviceOf(folder, std::string(FilePath::folder(folder)));
}

}  // namespace

int prepareTrash(const std::string& path) {
  std::error_code wayError;
  std::filesystem::create_directories(FilePath::folder(path), wayError);
  if (wayError) return wayError.value();
  for (const auto& folder : {path, path + "/files", path + "/info"}) {
    if (const int error = makeFolder(folder); error != 0) return error;
  }
  return 0;
}

std::string topFolderOf(std::string folder) {
  while (folder != "/" && !isMountRoot(folder)) folder = FilePath::folder(folder);
  return folder;
}

TopTrash preparedTopTrash(const std::string& topFolder) {
  const auto user = std::to_string(::getuid());
  const auto shared = FilePath::join(topFolder, ".Trash");
  const auto below = shared + "/" + user;
  if (isTrustworthy(shared) && prepareOwnTrash(below) == 0) return {{below, topFolder}};
  const auto own = FilePath::join(topFolder, ".Trash-" + user);
  return {{own, topFolder}, prepareOwnTrash(own)};
}

}  // namespace Nimbrel
