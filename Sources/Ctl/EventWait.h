#pragma once

#include "Outcome.h"

#include <functional>
#include <stop_token>
#include <string_view>

namespace Nimbrel::Ctl {

/// Why a command failed that a signal has ended.
inline constexpr std::string_view interrupted = "interrupted";

/// Starts something that calls `done`, once, when it has come to its end, and runs the event loop of the program until
/// then. Returns whether that came. It does not when a signal has ended the loop: the destructors then run, which leave
/// terminal and picture reader as they should be.
[[nodiscard]] bool untilDone(const std::function<void(std::function<void()> done)>& start);

/// Does long work in a thread of its own while the event loop runs. A signal asks it to stop, and it is waited for; the
/// command then fails, unless the work was done by that time.
[[nodiscard]] Outcome inStoppableThread(const std::function<Outcome(const std::stop_token& stop)>& work);

}  // namespace Nimbrel::Ctl
