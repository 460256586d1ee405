#pragma once

#include "Platform/FileEvents.h"

#include <memory>
#include <string>

namespace Nimbrel {

/// What the watching rests on; tests shorten the times and stand in for the kinds of file systems.
struct InotifyOptions {
  /// How often a missing folder is looked for.
  Seconds missingFolderInterval{2};
  /// How often a folder that sends no events is compared with its former state.
  Seconds polledFolderInterval{30};
  /// Whether the file system at a path leaves out what other machines change; asked from other threads as well. Null
  /// for the system's own answer.
  bool (*sendsNoEvents)(const std::string& path) = nullptr;
};

/// File events through inotify. `onChange` is always called from the event loop, and may do anything: watch other
/// folders, or destroy the object.
///
/// A folder that stays in the list from one call of watch() to the next is watched without a gap.
///
/// A recursive folder is looked at slowly as a whole when the limit is reached for a part of it, or when a part lies on
/// a file system that sends no events; its watches are given back. A slow look compares the names of all entries and
/// the times of the folders: a file that is written in place goes unseen, and a hidden entry may count. The first look
/// at a folder counts as a change. For a folder to which watches were refused they are asked for again, at first with
/// each look, then ever more seldom, up to every 64th.
///
/// An announcement covers the events of its path up to and with the first that ends a change (closed after writing,
/// moved, deleted), then all those for which inode, size and modification time are still what they were at that event,
/// for five seconds in all. It does not cover a slow look.
[[nodiscard]] std::unique_ptr<FileEvents> makeInotifyFileEvents(InotifyOptions options = {});

}  // namespace Nimbrel
