#pragma once

#include <functional>
#include <string_view>

namespace Nimbrel::Ctl {

/// Why a command failed that a signal has ended.
inline constexpr std::string_view interrupted = "interrupted";

/// Starts something that calls `done`, once, when it has come to its end, and runs the event loop of the program until
/// then. Returns whether that came. It does not when a signal has ended the loop: the destructors then run, which leave
/// terminal and picture reader as they should be.
[[nodiscard]] bool untilDone(const std::function<void(std::function<void()> done)>& start);

}  // namespace Nimbrel::Ctl
