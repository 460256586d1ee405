#pragma once

#include <functional>

namespace Nimbrel::Ctl {

/// Starts something that calls `done` when it has come to its end, and runs the event loop of the program until then.
void untilDone(const std::function<void(std::function<void()> done)>& start);

}  // namespace Nimbrel::Ctl
