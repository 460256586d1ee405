#pragma once

#include "Foundation/Timestamp.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// Facts about files. Any thread, no state; nothing here changes a file.
namespace Nimbrel::FileSystem {

/// Whether a file or folder stands at the path, links followed. What cannot be found out (no permission, a device that
/// does not answer) counts as there: only a certain absence lets the catalogue forget a file.
[[nodiscard]] bool exists(const std::string& path);

/// Whether the name is taken, be it by a link that leads nowhere.
[[nodiscard]] bool isTaken(const std::string& path);

/// Whether a folder, a device or the like stands at the path, links followed: anything but a regular file or nothing.
[[nodiscard]] bool isOtherThanFile(const std::string& path);

/// The earlier of birth and modification time, since copies cannot keep the former. Absent when neither can be read.
[[nodiscard]] std::optional<Timestamp> creationDate(const std::string& path);

/// When the content was last changed, links followed; absent when that cannot be read.
[[nodiscard]] std::optional<Timestamp> modificationDate(const std::string& path);

/// Whether the last component of the path is a link, wherever it leads.
[[nodiscard]] bool isLink(const std::string& path);

/// Size in bytes, links followed; absent when it cannot be read.
[[nodiscard]] std::optional<std::int64_t> size(const std::string& path);

enum class EntryKind {
  File,    ///< a regular file, or a link to one
  Folder,  ///< a folder, but no link to one
  Other,
};

/// One call for each entry of a folder that is not hidden. The name is valid during the call only.
using EntryVisitor = std::function<void(std::string_view name, EntryKind kind)>;

/// Lists a folder, in no particular order. A folder that cannot be read is empty, one that fails midway ends there.
void forEachEntry(const std::string& folder, const EntryVisitor& visit);

/// One call for each file. The path is valid during the call only.
using FileVisitor = std::function<void(const std::string& path)>;

/// One call for each entry. The path is valid during the call only.
using PathVisitor = std::function<void(const std::string& path, EntryKind kind)>;

/// All entries below a folder that are not hidden nor in a hidden folder, folders among them. Links to folders are not
/// followed, and folders that cannot be read are passed over.
void forEachEntryBelow(const std::string& folder, const PathVisitor& visit);

/// All files below a folder that are not hidden nor in a hidden folder. Links to folders are not followed, and folders
/// that cannot be read are passed over.
void forEachFileBelow(const std::string& folder, const FileVisitor& visit);

}  // namespace Nimbrel::FileSystem
