#pragma once

#include "Foundation/Timestamp.h"

#include <QFuture>
#include <QObject>
#include <QThreadPool>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel {

/// What tells whether a file was written to.
struct FileState {
  std::optional<Timestamp> modified;
  std::optional<std::int64_t> size;

  bool operator==(const FileState&) const = default;
};

/// The state of a file at this moment. Any thread.
[[nodiscard]] FileState stateOfFile(const std::string& path);

/// Reads pictures and encodes them as HEIC on all cores, a few ahead of whoever takes them, in their order. Main
/// thread.
class HeicEncodings {
 public:
  struct Picture {
    std::string path;
    std::int64_t limit = 0;  ///< bytes that the file must stay below
  };
  struct File {
    std::string content;
    FileState source;  ///< of the picture's file before it was read
  };

  /// The pool is borrowed, and must outlive what is being encoded. `quality` is from 0 to 1.
  HeicEncodings(QThreadPool& pool, std::vector<Picture> pictures, double quality);
  /// Waits for nothing: what is being encoded ends unheard, what has not begun is not.
  ~HeicEncodings();
  HeicEncodings(const HeicEncodings&) = delete;
  HeicEncodings& operator=(const HeicEncodings&) = delete;

  /// Waits for the next picture's file, one call for each picture; absent when it cannot be read, cannot be encoded or
  /// would not stay below its limit.
  [[nodiscard]] std::optional<File> next();

  /// Calls `then` once next() would not wait, in a later turn of the event loop; never once `context` is gone. Only
  /// while there is a next picture.
  void whenNext(QObject* context, std::function<void()> then) const;

 private:
  void startMore();

  QThreadPool& pool_;
  std::vector<Picture> pictures_;
  double quality_;
  std::size_t started_ = 0;
  std::shared_ptr<std::atomic_bool> isStopped_ = std::make_shared<std::atomic_bool>(false);
  std::deque<QFuture<std::optional<File>>> underWay_;
};

}  // namespace Nimbrel
