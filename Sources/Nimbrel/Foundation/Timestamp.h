#pragma once

#include <chrono>
#include <functional>

namespace Nimbrel {

/// A span of time in seconds, with fraction.
using Seconds = std::chrono::duration<double>;

/// A moment: seconds since 1970 in UTC, with fraction, as the catalogue stores it.
using Timestamp = std::chrono::sys_time<Seconds>;

/// Answers the present moment. Handed to whatever needs to know it, so that tests can set the time.
using Clock = std::function<Timestamp()>;

[[nodiscard]] constexpr double secondsSince1970(Timestamp moment) { return moment.time_since_epoch().count(); }
[[nodiscard]] constexpr Timestamp timestamp(double secondsSince1970) { return Timestamp{Seconds{secondsSince1970}}; }

}  // namespace Nimbrel
