#pragma once

#include "Foundation/Result.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace Nimbrel {

/// A folder out of which no path leads, whatever links stand in it and whatever a forged envelope says. For one run:
/// what was found out about folders below it is remembered, of some thousands at most. One thread.
class ConfinedFolder {
 public:
  /// The folder, which is there; a link at its place is followed.
  explicit ConfinedFolder(const std::string& path);

  /// Without a slash at its end.
  [[nodiscard]] const std::string& path() const { return path_; }

  /// Where the path of an envelope leads. Absent when that is nowhere to write to: empty, with a slash in front, with a
  /// piece "..", with a zero in it, or through a link that leads out of the folder or to nothing. An error, in words
  /// for people, when it is longer than what any system opens: then nothing is copied of it and no link looked at.
  [[nodiscard]] Result<std::optional<std::string>> location(std::string_view relativePath);

  /// The path below the folder of something in it, as envelopes hold it. Absent when they cannot hold it, since it is
  /// not UTF-8.
  [[nodiscard]] std::optional<std::string> relativePath(std::string_view path) const;

  /// Whether the path, which lies in the folder by its text, does so by its links too. A link that leads to nothing
  /// does not. What is not there yet lies where its folder does.
  [[nodiscard]] bool holds(const std::string& path);

 private:
  [[nodiscard]] bool holdsFolder(const std::string& folder);
  [[nodiscard]] bool isBelow(const std::string& path) const;

  std::string path_;
  std::optional<std::string> canonical_;  ///< the path without links; absent when it cannot be found out
  std::map<std::string, bool, std::less<>> folders_;
};

}  // namespace Nimbrel
