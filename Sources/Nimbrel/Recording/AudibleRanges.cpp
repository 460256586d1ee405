#include "Recording/AudibleRanges.h"

#include "Recording/RecordingTimes.h"

#include <algorithm>
#include <cstdlib>

namespace Nimbrel::RecordingProcessor {

using MediaFile::SoundBuffer;
using MediaFile::TimeRange;

namespace {

/// Samples whose absolute value is no greater are silent.
constexpr int loudestSilence = 420;
/// Seconds.
constexpr double shortestPause = 0.55;
constexpr double roomBefore = 0.15;
constexpr double roomAfter = 0.2;
/// Far less than a sample: the difference of two times is off by that much, which must not decide.
constexpr double roundingError = 1e-9;

bool isAudible(std::span<const std::int16_t> samples) {
  return std::ranges::any_of(samples, [](int sample) { return std::abs(sample) > loudestSilence; });
}

}  // namespace

void AudibleRanges::add(const SoundBuffer& buffer) {
  if (!isAudible(buffer.samples)) return;
  const TimeRange range{.start = buffer.start, .end = buffer.start + lengthOf(buffer)};
  if (!merged_.empty() && range.start - merged_.back().end < shortestPause - roundingError) {
    merged_.back().end = std::max(merged_.back().end, range.end);
  } else {
    merged_.push_back(range);
  }
}

std::vector<TimeRange> AudibleRanges::padded() const {
  std::vector<TimeRange> result;
  result.reserve(merged_.size());
  for (const auto& [start, end] : merged_) {
    result.push_back({.start = onTimescale(std::max(0.0, start - roomBefore)), .end = onTimescale(end + roomAfter)});
  }
  return result;
}

}  // namespace Nimbrel::RecordingProcessor
