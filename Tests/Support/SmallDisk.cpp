#include "Support/SmallDisk.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

namespace Nimbrel::Testing {

namespace {

constexpr int diskFailed = 255;

bool write(const char* path, const std::string& content) { return bool(std::ofstream(path) << content << std::flush); }

/// A namespace of users in which whoever we are is root.
bool becomeRoot() {
  const auto user = "0 " + std::to_string(getuid()) + " 1";
  const auto group = "0 " + std::to_string(getgid()) + " 1";
  return unshare(CLONE_NEWUSER) == 0 && write("/proc/self/uid_map", user) && write("/proc/self/setgroups", "deny") &&
         write("/proc/self/gid_map", group);
}

/// Mounts need a namespace of mounts, and root's rights in it.
bool enterNamespace() {
  if (unshare(CLONE_NEWNS) != 0 && (!becomeRoot() || unshare(CLONE_NEWNS) != 0)) return false;
  return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

bool mountSmallDisk(const std::string& folder, std::size_t bytes) {
  const auto options = "size=" + std::to_string(bytes);
  return mount("tmpfs", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

bool mountReadOnly(const std::string& folder) {
  const char* path = folder.c_str();
  return mount(path, path, nullptr, MS_BIND, nullptr) == 0 &&
         mount(nullptr, path, nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY, nullptr) == 0;
}

int inChild(const std::function<bool()>& makeDisk, const std::function<int()>& body) {
  const auto child = fork();
  if (child == 0) _exit(enterNamespace() && makeDisk() ? body() : diskFailed);
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) return diskFailed;
  return WEXITSTATUS(status);
}

}  // namespace

int onSmallDisk(const std::string& folder, std::size_t bytes, const std::function<int()>& body) {
  return inChild([&] { return mountSmallDisk(folder, bytes); }, body);
}

int onReadOnlyDisk(const std::string& folder, const std::function<int()>& body) {
  return inChild([&] { return mountReadOnly(folder); }, body);
}

}  // namespace Nimbrel::Testing
