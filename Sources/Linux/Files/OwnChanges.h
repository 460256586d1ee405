#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <unordered_map>

namespace Nimbrel {

/// The changes that this process has announced. An announcement covers the events of its path up to and with the first
/// one that ends a change (closed after writing, moved, deleted). What then stands there is remembered by inode, size
/// and modification time, and further events are covered as long as it still does. After five seconds nothing is.
class OwnChanges {
 public:
  using Clock = std::chrono::steady_clock;

  void announce(const std::string& path, Clock::time_point now = Clock::now());

  /// Whether an inotify event with this mask at this path is our own doing.
  [[nodiscard]] bool covers(const std::string& path, std::uint32_t mask, Clock::time_point now = Clock::now());

 private:
  /// What stands at a path; all zero when nothing does.
  struct Standing {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    std::int64_t modifiedSeconds = 0;
    std::int64_t modifiedNanoseconds = 0;

    bool operator==(const Standing&) const = default;
    static Standing at(const std::string& path);
  };
  struct Announcement {
    Clock::time_point lapses;
    std::optional<Standing> result;
  };
  struct Lapse {
    Clock::time_point moment;
    std::string path;
  };

  void dropLapsed(Clock::time_point now);

  std::unordered_map<std::string, Announcement> announcements_;
  std::deque<Lapse> lapses_;
};

}  // namespace Nimbrel
