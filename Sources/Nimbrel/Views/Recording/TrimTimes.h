#pragma once

#include <QString>

namespace Nimbrel {

/// Between which times a slider moves. Seconds.
struct TimeSpan {
  double least = 0;
  double most = 0;

  bool operator==(const TimeSpan&) const = default;
};

/// What is kept of a recording, as its tools have it, and how far its ends can be moved: they never cross, and at least
/// a tenth of a second stays between them. Seconds.
struct TrimTimes {
  double duration = 1;
  double start = 0;
  double end = 1;

  [[nodiscard]] TimeSpan startSpan() const;
  [[nodiscard]] TimeSpan endSpan() const;

  bool operator==(const TrimTimes&) const = default;
};

/// "1:05": whole minutes, however many, and seconds; what is left of a second does not count.
[[nodiscard]] QString timeText(double seconds);

}  // namespace Nimbrel
