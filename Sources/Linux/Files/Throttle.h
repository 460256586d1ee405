#pragma once

#include "Foundation/Timestamp.h"

#include <QTimer>

#include <chrono>
#include <functional>

namespace Nimbrel {

/// Turns a stream of changes into calls: one in the next turn of the event loop for the first change after a quiet
/// time, then at most one in each interval. Nothing runs while there is no change. Main thread only.
class Throttle {
 public:
  Throttle();

  /// What is called, and the least time between two calls. A change already noted leads to a call of the new one. The
  /// call may do anything, also destroy this object.
  void set(std::function<void()> call, Seconds interval);

  void noteChange();

  /// Drops what was noted.
  void stop();

 private:
  using Clock = std::chrono::steady_clock;

  void fire();

  std::function<void()> call_;
  std::chrono::milliseconds interval_{0};
  Clock::time_point earliestNext_;
  QTimer timer_;
};

}  // namespace Nimbrel
