#include "Platform/FileSystem.h"

#include "Foundation/FilePath.h"
#include "Linux/Files/FileTime.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <memory>
#include <vector>

namespace Nimbrel::FileSystem {

namespace {

using Facts = struct statx;

/// Errors after which it is certain that nothing can ever be opened under the path.
bool provesAbsence(int error) { return error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG || error == ELOOP; }

bool holdsZero(const std::string& path) { return path.find('\0') != std::string::npos; }

/// 0, or the error.
int read(const std::string& path, int flags, unsigned wanted, Facts& facts) {
  // The system would end the path at the zero and answer for another file.
  if (holdsZero(path)) return ENOENT;
  return ::statx(AT_FDCWD, path.c_str(), flags, wanted, &facts) == 0 ? 0 : errno;
}

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

OpenFolder open(const std::string& path, int flags) {
  if (holdsZero(path)) return nullptr;
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK | flags);
  if (descriptor < 0) return nullptr;
  OpenFolder folder(::fdopendir(descriptor));
  if (!folder) ::close(descriptor);
  return folder;
}

bool isLinkToFile(int folder, const char* name) {
  struct stat target {};
  return ::fstatat(folder, name, &target, 0) == 0 && S_ISREG(target.st_mode);
}

/// For file systems that leave the kind out of their listings.
EntryKind lookedUpKind(int folder, const char* name) {
  struct stat entry {};
  if (::fstatat(folder, name, &entry, AT_SYMLINK_NOFOLLOW) != 0) return EntryKind::Other;
  if (S_ISREG(entry.st_mode)) return EntryKind::File;
  if (S_ISDIR(entry.st_mode)) return EntryKind::Folder;
  return S_ISLNK(entry.st_mode) && isLinkToFile(folder, name) ? EntryKind::File : EntryKind::Other;
}

EntryKind kindOf(int folder, const dirent& entry) {
  switch (entry.d_type) {
    case DT_REG:
      return EntryKind::File;
    case DT_DIR:
      return EntryKind::Folder;
    case DT_LNK:
      return isLinkToFile(folder, entry.d_name) ? EntryKind::File : EntryKind::Other;
    case DT_UNKNOWN:
      return lookedUpKind(folder, entry.d_name);
    default:
      return EntryKind::Other;
  }
}

/// A template and not a std::function, since a library's walk comes through here once for each file.
template <class Visit>
void forEachVisible(DIR* folder, Visit visit) {
  while (const dirent* entry = ::readdir(folder)) {
    if (entry->d_name[0] != '.') visit(*entry);
  }
}

}  // namespace

bool exists(const std::string& path) {
  Facts facts{};
  return !provesAbsence(read(path, 0, STATX_TYPE, facts));
}

bool isTaken(const std::string& path) {
  Facts facts{};
  return !provesAbsence(read(path, AT_SYMLINK_NOFOLLOW, STATX_TYPE, facts));
}

bool isOtherThanFile(const std::string& path) {
  Facts facts;
  return read(path, 0, STATX_TYPE, facts) == 0 && !S_ISREG(facts.stx_mode);
}

std::optional<Timestamp> creationDate(const std::string& path) {
  Facts facts{};
  if (read(path, 0, STATX_BTIME | STATX_MTIME, facts) != 0) return std::nullopt;
  std::optional<Timestamp> earliest;
  if ((facts.stx_mask & STATX_MTIME) != 0) earliest = momentOf(facts.stx_mtime);
  // A birth time of zero is what servers send that keep none.
  if ((facts.stx_mask & STATX_BTIME) != 0 && facts.stx_btime.tv_sec > 0) {
    const auto birth = momentOf(facts.stx_btime);
    earliest = earliest ? std::min(*earliest, birth) : birth;
  }
  return earliest;
}

std::optional<Timestamp> modificationDate(const std::string& path) {
  Facts facts{};
  if (read(path, 0, STATX_MTIME, facts) != 0 || (facts.stx_mask & STATX_MTIME) == 0) return std::nullopt;
  return momentOf(facts.stx_mtime);
}

bool isLink(const std::string& path) {
  Facts facts{};
  return read(path, AT_SYMLINK_NOFOLLOW, STATX_TYPE, facts) == 0 && S_ISLNK(facts.stx_mode);
}

std::optional<std::int64_t> size(const std::string& path) {
  Facts facts{};
  if (read(path, 0, STATX_SIZE, facts) != 0 || (facts.stx_mask & STATX_SIZE) == 0) return std::nullopt;
  return static_cast<std::int64_t>(facts.stx_size);
}

void forEachEntry(const std::string& path, const EntryVisitor& visit) {
  const auto folder = open(path, 0);
  if (!folder) return;
  const int descriptor = ::dirfd(folder.get());
  forEachVisible(folder.get(), [&](const dirent& entry) { visit(entry.d_name, kindOf(descriptor, entry)); });
}

void forEachEntryBelow(const std::string& top, const PathVisitor& visit) {
  // A list of folders still to come, and not recursion: one folder is open at a time, however deep the tree is.
  std::vector<std::string> pending{FilePath::withoutTrailingSlashes(top)};
  std::string path;
  int links = 0;
  while (!pending.empty()) {
    path.assign(pending.back());
    pending.pop_back();
    const auto folder = open(path, links);
    links = O_NOFOLLOW;
    if (!folder) continue;
    if (path.back() != '/') path += '/';
    const auto prefix = path.size();
    const int descriptor = ::dirfd(folder.get());
    forEachVisible(folder.get(), [&](const dirent& entry) {
      path.resize(prefix);
      path += entry.d_name;
      // Nobody can open what has a longer path.
      if (path.size() >= PATH_MAX) return;
      const auto kind = kindOf(descriptor, entry);
      visit(path, kind);
      if (kind == EntryKind::Folder) pending.push_back(path);
    });
  }
}

void forEachFileBelow(const std::string& top, const FileVisitor& visit) {
  forEachEntryBelow(top, [&](const std::string& path, EntryKind kind) {
    if (kind == EntryKind::File) visit(path);
  });
}

}  // namespace Nimbrel::FileSystem
