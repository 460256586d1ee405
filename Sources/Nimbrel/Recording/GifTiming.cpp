#include "Recording/GifTiming.h"

#include "Recording/RecordingTimes.h"

#include <algorithm>

namespace Nimbrel::RecordingProcessor {

namespace {

constexpr int mostFrames = 180;
constexpr double shortestDuration = 0.1;

}  // namespace

GifTiming gifTiming(double duration, int fps) {
  const double wanted = duration * fps;
  const int count = wanted >= 1 ? static_cast<int>(std::min<double>(wanted, mostFrames)) : 1;
  return {.frameCount = count, .rate = count / std::max(duration, shortestDuration)};
}

double frameTime(const GifTiming& timing, int frame, double duration) {
  return onTimescale(std::min(frame / timing.rate, duration));
}

double sourceTime(std::span<const MediaFile::TimeRange> stretches, double time) {
  constexpr double halfTick = 0.5 / timescale;  // far above what sums of times are wrong by
  double left = time;
  for (const auto& stretch : stretches) {
    if (left < stretch.length() - halfTick) return stretch.start + std::max(0.0, left);
    left -= stretch.length();
  }
  return stretches.back().end;
}

}  // namespace Nimbrel::RecordingProcessor
