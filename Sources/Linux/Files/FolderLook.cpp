#include "Linux/Files/FolderLook.h"

#include "Foundation/FilePath.h"
#include "Platform/FileSystem.h"

#include <sys/stat.h>

#include <functional>
#include <string>
#include <vector>

namespace Nimbrel {

namespace {

bool folderStands(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 ? S_ISDIR(facts.st_mode) : FileSystem::exists(path);
}

std::uint64_t mixed(std::uint64_t value) {
  value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9U;
  value = (value ^ (value >> 27)) * 0x94D049BB133111EBU;
  return value ^ (value >> 31);
}

std::uint64_t markOfEntry(const std::string& path, FileSystem::EntryKind kind) {
  return mixed(std::hash<std::string>()(path) + static_cast<std::uint64_t>(kind));
}

std::uint64_t markOfFolder(const std::string& path) {
  struct stat facts {};
  if (::stat(path.c_str(), &facts) != 0) return 0;
  const auto seconds = static_cast<std::uint64_t>(facts.st_mtim.tv_sec);
  const auto nanoseconds = static_cast<std::uint64_t>(facts.st_mtim.tv_nsec);
  return mixed(std::hash<std::string>()(path) ^ mixed(seconds * 1'000'000'000U + nanoseconds));
}

}  // namespace

FolderLook lookAt(const WatchedFolder& folder, bool (*sendsNoEvents)(const std::string& path),
                  const std::atomic<bool>& cancelled) {
  FolderLook look{folderStands(folder.path), sendsNoEvents(folder.path), 0};
  std::vector<std::string> pending{folder.path};
  while (!pending.empty() && !cancelled) {
    const auto current = std::move(pending.back());
    pending.pop_back();
    // The marks are summed, since a listing comes in any order. The time is read first: what changes while the folder
    // is listed then shows in the next look.
    look.signature += markOfFolder(current);
    FileSystem::forEachEntry(current, [&](std::string_view name, FileSystem::EntryKind kind) {
      auto path = FilePath::join(current, name);
      look.signature += markOfEntry(path, kind);
      const bool isFolder = kind == FileSystem::EntryKind::Folder;
      if (isFolder && folder.depth == WatchDepth::Recursive) pending.push_back(std::move(path));
    });
  }
  // A foreign system mounted further down is told by its own folder only, so it is not looked for here.
  return look;
}

}  // namespace Nimbrel
