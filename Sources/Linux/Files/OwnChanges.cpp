#include "Linux/Files/OwnChanges.h"

#include <sys/inotify.h>
#include <sys/stat.h>

namespace Nimbrel {

namespace {

constexpr std::chrono::seconds lifetime{5};
constexpr std::uint32_t endsChange = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE;

}  // namespace

OwnChanges::Standing OwnChanges::Standing::at(const std::string& path) {
  struct stat facts {};
  if (::lstat(path.c_str(), &facts) != 0) return {};
  return {facts.st_dev, facts.st_ino, facts.st_size, facts.st_mtim.tv_sec, facts.st_mtim.tv_nsec};
}

void OwnChanges::announce(const std::string& path, Clock::time_point now) {
  dropLapsed(now);
  announcements_[path] = {now + lifetime, std::nullopt};
  lapses_.push_back({now + lifetime, path});
}

bool OwnChanges::covers(const std::string& path, std::uint32_t mask, Clock::time_point now) {
  dropLapsed(now);
  const auto found = announcements_.find(path);
  if (found == announcements_.end()) return false;
  auto& result = found->second.result;
  if (result) {
    if (*result == Standing::at(path)) return true;
    announcements_.erase(found);
    return false;
  }
  if ((mask & endsChange) != 0) result = Standing::at(path);
  return true;
}

void OwnChanges::dropLapsed(Clock::time_point now) {
  while (!lapses_.empty() && lapses_.front().moment <= now) {
    const auto found = announcements_.find(lapses_.front().path);
    // A path that was announced once more has a later lapse in the queue.
    if (found != announcements_.end() && found->second.lapses <= now) announcements_.erase(found);
    lapses_.pop_front();
  }
}

}  // namespace Nimbrel
