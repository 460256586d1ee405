#pragma once

#include <functional>

namespace Nimbrel::Screencapture {

/// While it lives, `finish` is called if the program ends through exit() all of a sudden, as the windows' library does
/// when the display goes away, which it does at the end of a session. What finish() returns is the program's status
/// then. One in a program; main thread.
class UnexpectedExit {
 public:
  explicit UnexpectedExit(std::function<int()> finish);
  ~UnexpectedExit();
  UnexpectedExit(const UnexpectedExit&) = delete;
  UnexpectedExit& operator=(const UnexpectedExit&) = delete;
};

}  // namespace Nimbrel::Screencapture
