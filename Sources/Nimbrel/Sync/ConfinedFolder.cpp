#include "Sync/ConfinedFolder.h"

#include "Foundation/FilePath.h"
#include "Platform/FileSystem.h"

#include <QUtf8StringView>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>

namespace Nimbrel {

namespace {

/// No system opens paths that are as long as this.
constexpr std::size_t tooLong = 4096;

/// Folders that are remembered at a time; forged envelopes can name any number.
constexpr std::size_t mostFolders = 4096;

constexpr std::optional<std::string> nowhere;

bool climbs(std::string_view relativePath) {
  for (std::size_t start = 0; start <= relativePath.size();) {
    const auto end = std::min(relativePath.find('/', start), relativePath.size());
    if (relativePath.substr(start, end - start) == "..") return true;
    start = end + 1;
  }
  return false;
}

bool isSafe(std::string_view relativePath) {
  return !relativePath.empty() && !relativePath.starts_with('/') && relativePath.find('\0') == std::string_view::npos &&
         !climbs(relativePath);
}

/// The path without links; absent when one of them leads to nothing.
std::optional<std::string> withoutLinks(const std::string& path) {
  std::error_code error;
  const auto canonical = std::filesystem::canonical(path, error);
  return error ? std::nullopt : std::optional(canonical.native());
}

}  // namespace

ConfinedFolder::ConfinedFolder(const std::string& path)
    : path_(FilePath::withoutTrailingSlashes(path)), canonical_(withoutLinks(path_)) {}

Result<std::optional<std::string>> ConfinedFolder::location(std::string_view relativePath) {
  if (!isSafe(relativePath)) return nowhere;
  const auto named = relativePath.substr(0, relativePath.find_last_not_of('/') + 1);
  if (path_.size() + 1 + named.size() >= tooLong) return Error{"The name is too long"};
  auto path = FilePath::join(path_, named);
  return holds(path) ? std::optional(std::move(path)) : nowhere;
}

std::optional<std::string> ConfinedFolder::relativePath(std::string_view path) const {
  const auto relative = path.substr(std::min(path.size(), FilePath::join(path_, "").size()));
  const QUtf8StringView text(relative.data(), static_cast<qsizetype>(relative.size()));
  return isSafe(relative) && text.isValidUtf8() ? std::optional<std::string>(relative) : std::nullopt;
}

bool ConfinedFolder::isBelow(const std::string& path) const {
  return canonical_ && (path == *canonical_ || path.starts_with(FilePath::join(*canonical_, "")));
}

bool ConfinedFolder::holds(const std::string& path) {
  if (!holdsFolder(std::string(FilePath::folder(path)))) return false;
  if (!FileSystem::isLink(path)) return true;
  const auto target = withoutLinks(path);
  return target && isBelow(*target);
}

bool ConfinedFolder::holdsFolder(const std::string& folder) {
  if (folder.size() <= path_.size()) return true;
  if (const auto known = folders_.find(folder); known != folders_.end()) return known->second;
  const bool isHeld = holds(folder);
  if (folders_.size() >= mostFolders) folders_.clear();
  folders_.emplace(folder, isHeld);
  return isHeld;
}

}  // namespace Nimbrel
