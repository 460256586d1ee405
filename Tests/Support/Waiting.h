#pragma once

#include <chrono>
#include <functional>

namespace Nimbrel::Testing {

/// Runs the event loop until the condition holds; returns whether it did before the time was up. The time is a bound
/// for a test that is about to fail, never a measure.
[[nodiscard]] bool waitUntil(const std::function<bool()>& condition,
                             std::chrono::milliseconds limit = std::chrono::seconds(20));

/// Runs the event loop for a while, for tests that something does not happen.
void runEventLoopFor(std::chrono::milliseconds time);

}  // namespace Nimbrel::Testing
