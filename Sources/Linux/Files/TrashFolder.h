#pragma once

#include <string>
#include <string_view>

namespace Nimbrel {

/// A Trash on disk: deleted files in "files", and in "info" one file about each of them. Any thread.
struct TrashFolder {
  std::string path;
  std::string topFolder;  ///< what recorded paths are relative to; empty where they are absolute
};

/// Makes what is missing of the Trash at the path and of the way to it, the Trash for this user alone. Returns 0, or
/// the error number.
[[nodiscard]] int prepareTrash(const std::string& path);

/// Where the file system begins on which the folder lies. The folder is a path without links.
[[nodiscard]] std::string topFolderOf(std::string folder);

struct TopTrash {
  TrashFolder folder;
  int error = 0;
};
/// This user's Trash at the top of a file system, made where it is missing: below an administrator's ".Trash", where
/// that is one that can be trusted, else ".Trash-" and the user's number.
[[nodiscard]] TopTrash preparedTopTrash(const std::string& topFolder);

}  // namespace Nimbrel
