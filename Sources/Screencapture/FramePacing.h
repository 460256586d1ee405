#pragma once

#include <chrono>

namespace Nimbrel::Screencapture {

/// The moments at which a recording looks at the screen: multiples of `interval` after `start`. Whoever is late misses
/// some of them, and the rest stay where they were.
class FramePacing {
 public:
  using Time = std::chrono::steady_clock::time_point;
  using Duration = std::chrono::steady_clock::duration;

  FramePacing(Time start, Duration interval) : start_(start), interval_(interval) {}

  /// The first of these moments behind `now`.
  [[nodiscard]] Time next(Time now) const { return start_ + ((now - start_) / interval_ + 1) * interval_; }

 private:
  Time start_;
  Duration interval_;
};

}  // namespace Nimbrel::Screencapture
