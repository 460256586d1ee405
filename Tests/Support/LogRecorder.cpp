#include "Support/LogRecorder.h"

#include <utility>

namespace Nimbrel::Testing {

LogRecorder::LogRecorder()
    : former_(Log::setSink([this](std::string_view line) {
        const std::scoped_lock lock(mutex_);
        lines_.emplace_back(line);
      })) {}

LogRecorder::~LogRecorder() { Log::setSink(std::move(former_)); }

std::vector<std::string> LogRecorder::lines() const {
  const std::scoped_lock lock(mutex_);
  return lines_;
}

}  // namespace Nimbrel::Testing
