#pragma once

#include <functional>

namespace Nimbrel::Ctl {

/// Starts something that calls `done`, once, when it has come to its end, and runs the event loop of the program until
/// then. Returns whether that came; not, when a signal has ended the loop.
bool untilDone(const std::function<void(std::function<void()> done)>& start);

}  // namespace Nimbrel::Ctl
