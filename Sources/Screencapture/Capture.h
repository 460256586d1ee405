#pragma once

#include "Screencapture/CaptureRequest.h"

#include <functional>
#include <string>

namespace Nimbrel::Screencapture {

/// How a run of the program ended.
struct Outcome {
  ExitStatus status = Done;
  std::string reason;  ///< for standard error; empty when done

  bool operator==(const Outcome&) const = default;
};

/// A picture or a movie under way, in one of the ways that there are. Given up with this object, which leaves no file.
/// Main thread.
class Capture {
 public:
  /// Called once, in a later turn of the event loop than the beginning; never once the capture is gone. It may destroy
  /// the capture.
  using Then = std::function<void(Outcome outcome)>;

  Capture() = default;
  virtual ~Capture() = default;
  Capture(const Capture&) = delete;
  Capture& operator=(const Capture&) = delete;

  /// Asks for the end: a movie that has begun is finished, anything else is given up; both count as done. `Then`
  /// follows. Again, it does nothing.
  virtual void interrupt() = 0;
};

}  // namespace Nimbrel::Screencapture
