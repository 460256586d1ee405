#include "Recording/SoundOverview.h"

#include "Recording/AudibleRanges.h"
#include "Recording/KeptStretches.h"
#include "Recording/RecordingTimes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <span>

namespace Nimbrel::RecordingProcessor {

namespace {

constexpr double decibelsShown = 60;
constexpr double loudestPeak = 32768;

int peakOf(std::span<const std::int16_t> samples) {
  int peak = 0;
  for (const int sample : samples) peak = std::max(peak, std::abs(sample));
  return peak;
}

}  // namespace

void SoundPeaks::add(const MediaFile::SoundBuffer& buffer) {
  if (!(duration_ > 0) || peaks_.empty()) return;
  const auto parts = static_cast<double>(peaks_.size());
  const auto count = buffer.samples.size();
  const double samplesAPart = duration_ / parts * static_cast<double>(count) / lengthOf(buffer);
  const double first = buffer.start / duration_ * parts;
  for (std::size_t at = 0; at < count;) {
    // By the sample's own place, so that errors of rounding do not add up.
    const double part = std::floor(first + (static_cast<double>(at) + 0.5) / samplesAPart);
    if (!(part < parts)) return;
    const auto end = std::ceil((part + 1 - first) * samplesAPart - 0.5);
    const auto next = std::max(at + 1, static_cast<std::size_t>(std::clamp(end, 0.0, static_cast<double>(count))));
    if (part >= 0) {
      auto& peak = peaks_[static_cast<std::size_t>(part)];
      peak = std::max(peak, peakOf(buffer.samples.subspan(at, next - at)));
    }
    at = next;
  }
}

double loudness(int peak) {
  if (peak <= 0) return 0;
  return std::clamp(1 + 20 * std::log10(peak / loudestPeak) / decibelsShown, 0.0, 1.0);
}

Result<SoundOverview> soundOverview(const std::string& url, std::size_t parts, const std::stop_token& stop) {
  const auto length = MediaFile::duration(url);
  if (!length) return length.error();
  SoundOverview overview{.duration = std::max(length.value(), shortestLength)};
  SoundPeaks peaks(overview.duration, parts);
  AudibleRanges ranges;
  const auto failure = MediaFile::forEachSoundBuffer(
      url,
      [&](const MediaFile::SoundBuffer& buffer) {
        overview.hasSound = true;
        ranges.add(buffer);
        peaks.add(buffer);
      },
      stop);
  if (failure) return *failure;
  overview.audible = ranges.padded();
  overview.peaks = peaks.peaks();
  return overview;
}

}  // namespace Nimbrel::RecordingProcessor
