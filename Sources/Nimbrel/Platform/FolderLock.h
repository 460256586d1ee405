#pragma once

#include <memory>
#include <optional>
#include <stop_token>
#include <string>

namespace Nimbrel {

/// Holds a folder so that whoever else asks for this, in whatever process, has to wait; it keeps nobody from anything
/// else. Given back with this object, and when the process ends, however that comes. One thread at a time.
class FolderLock {
 public:
  /// Waits until nobody else holds the folder; absent when `stop` is asked for before that. Where the file system knows
  /// no such locks, or the folder cannot be opened, nothing is waited for and nothing held.
  [[nodiscard]] static std::optional<FolderLock> take(const std::string& folder, const std::stop_token& stop);
  ~FolderLock();
  FolderLock(FolderLock&& other) noexcept;
  FolderLock& operator=(FolderLock&& other) noexcept;

 private:
  struct State;
  explicit FolderLock(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;
};

}  // namespace Nimbrel
