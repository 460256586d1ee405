#include "Foundation/FilePath.h"
#include "Linux/Authentication/PamOwnerAuthentication.h"
#include "Linux/Checkup/Findings.h"
#include "Linux/Desktop/Account.h"
#include "Linux/Files/FileDescriptor.h"
#include "Platform/FileSystem.h"

#include <sys/inotify.h>

#include <fstream>

namespace Nimbrel::Checkup {

namespace {

/// A library has a folder for each month, and the user's own folders may have many more.
constexpr std::int64_t fewestWatches = 4096;

std::optional<std::int64_t> watchLimit() {
  std::ifstream file("/proc/sys/fs/inotify/max_user_watches");
  std::int64_t limit = 0;
  return file >> limit ? std::optional(limit) : std::nullopt;
}

bool canWatchNow() {
  const FileDescriptor queue(::inotify_init1(IN_CLOEXEC));
  return queue.isOpen() && ::inotify_add_watch(queue.number(), "/", IN_CREATE | IN_ONLYDIR) >= 0;
}

/// The service that PAM would go by, where it is installed.
std::string installedService() {
  const auto& folders = pamFolders();
  auto service = pamService(folders);
  for (const auto& folder : folders) {
    if (FileSystem::exists(FilePath::join(folder, service))) return service;
  }
  return {};
}

}  // namespace

Finding watchFinding() { return watchFinding(watchLimit(), canWatchNow()); }

Finding watchFinding(std::optional<std::int64_t> limit, bool canWatch) {
  const std::string name = "folder watches";
  if (!canWatch) {
    return {name, false,
            "other programs have used them up, and folders are looked at now and then only: raise "
            "fs.inotify.max_user_instances and fs.inotify.max_user_watches with sysctl"};
  }
  if (!limit) return {name, true, ""};
  const auto count = std::to_string(*limit);
  if (*limit >= fewestWatches) return {name, true, count + " at most"};
  return {name, false,
          "only " + count + ", and folders beyond are looked at now and then only: raise fs.inotify.max_user_watches " +
              "with sysctl"};
}

Finding authenticationFinding() {
  return authenticationFinding(Account::ofRealUser().value_or(Account{}).name, installedService());
}

Finding authenticationFinding(std::string_view account, std::string_view service) {
  const std::string name = "authentication";
  if (account.empty()) return {name, false, "the system knows no account of this user: sensitive shots stay locked"};
  if (service.empty()) return {name, false, "install Nimbrel's file for PAM, /etc/pam.d/nimbrel"};
  return {name, true, "PAM asks for " + std::string(account) + ", by the rules of \"" + std::string(service) + "\""};
}

}  // namespace Nimbrel::Checkup
