#include "Recording/KeptStretches.h"

#include "Recording/RecordingTimes.h"

#include <algorithm>

namespace Nimbrel::RecordingProcessor {

using MediaFile::TimeRange;

TimeRange windowOf(double start, double end, double duration) {
  const double lower = std::max(0.0, std::min(start, duration));
  double upper = std::min(end, duration);
  // After the end of the recording was heeded: a window that begins there still has a length. What is no number has
  // none either.
  if (!(lower + shortestLength <= upper)) upper = lower + shortestLength;
  return {.start = onTimescale(lower), .end = onTimescale(upper)};
}

std::vector<TimeRange> keptOf(const TimeRange& window, std::span<const TimeRange> audible) {
  std::vector<TimeRange> kept;
  for (const auto& range : audible) {
    const TimeRange common{.start = std::max(range.start, window.start), .end = std::min(range.end, window.end)};
    if (common.start < common.end) kept.push_back(common);
  }
  if (kept.empty()) kept.push_back(window);
  return kept;
}

std::vector<TimeRange> droppedOf(const TimeRange& window, std::span<const TimeRange> audible) {
  auto kept = keptOf(window, audible);
  std::ranges::sort(kept, {}, &TimeRange::start);
  std::vector<TimeRange> dropped;
  double reached = window.start;
  for (const auto& [start, end] : kept) {
    if (start > reached) dropped.push_back({.start = reached, .end = start});
    reached = std::max(reached, end);
  }
  if (reached < window.end) dropped.push_back({.start = reached, .end = window.end});
  return dropped;
}

double lastMoment(const TimeRange& window) {
  // Files may be half a thousandth of a second wrong about a picture's time, and a cut is made with that in mind: what
  // begins so shortly before its end is not in it.
  constexpr double beforeEnd = 0.001;
  return std::max(window.start, window.end - beforeEnd);
}

}  // namespace Nimbrel::RecordingProcessor
