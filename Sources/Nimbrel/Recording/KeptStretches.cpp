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

}  // namespace Nimbrel::RecordingProcessor
