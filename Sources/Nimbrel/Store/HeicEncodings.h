#pragma once

#include <QFuture>
#include <QThreadPool>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel {

/// Reads pictures and encodes them as HEIC on all cores, a few ahead of whoever takes them, in their order. Main
/// thread.
class HeicEncodings {
 public:
  struct Picture {
    std::string path;
    std::int64_t limit = 0;  ///< bytes that the file must stay below
  };

  /// `quality` is from 0 to 1.
  HeicEncodings(std::vector<Picture> pictures, double quality);
  /// Waits for what is being encoded.
  ~HeicEncodings();
  HeicEncodings(const HeicEncodings&) = delete;
  HeicEncodings& operator=(const HeicEncodings&) = delete;

  /// Waits for the next picture's file, one call for each picture; absent when it cannot be read, cannot be encoded or
  /// would not stay below its limit.
  [[nodiscard]] std::optional<std::string> next();

 private:
  void startMore();

  std::vector<Picture> pictures_;
  double quality_;
  std::size_t started_ = 0;
  QThreadPool pool_;
  std::deque<QFuture<std::optional<std::string>>> underWay_;
};

}  // namespace Nimbrel
