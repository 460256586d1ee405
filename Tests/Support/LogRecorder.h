#pragma once

#include "Foundation/Log.h"

#include <mutex>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// Keeps the lines of the log for the length of a test instead of printing them.
class LogRecorder {
 public:
  LogRecorder();
  ~LogRecorder();
  LogRecorder(const LogRecorder&) = delete;
  LogRecorder& operator=(const LogRecorder&) = delete;

  [[nodiscard]] std::vector<std::string> lines() const;

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
  Log::Sink former_;
};

}  // namespace Nimbrel::Testing
