#pragma once

#include "Foundation/Result.h"
#include "Platform/MediaFile.h"

#include <cstddef>
#include <stop_token>
#include <string>
#include <vector>

namespace Nimbrel::RecordingProcessor {

/// The sound of a whole recording at a glance. Times are seconds.
struct SoundOverview {
  double duration = 0;  ///< of the recording, which all of `peaks` make up
  bool hasSound = false;
  std::vector<MediaFile::TimeRange> audible;  ///< as audibleRanges() has them
  std::vector<int> peaks;                     ///< of parts of equal length: the loudest sample, 0 to 32768
};

/// Finds the loudest sample of each of many equal parts of a recording, from one buffer after the other. One thread at
/// a time.
class SoundPeaks {
 public:
  /// The duration is that of all parts together. Without a length, or with no parts, nothing is ever found.
  SoundPeaks(double duration, std::size_t parts) : duration_(duration), peaks_(parts) {}

  /// What lies outside of the duration counts for nothing.
  void add(const MediaFile::SoundBuffer& buffer);

  [[nodiscard]] const std::vector<int>& peaks() const { return peaks_; }

 private:
  double duration_;
  std::vector<int> peaks_;
};

/// How loud a peak is on a scale that the ear has: 0 for 60 decibels below the loudest there is, and for anything
/// softer, to 1 for that.
[[nodiscard]] double loudness(int peak);

/// Decodes the first sound track once, for both. Any thread but the main one. The error is that of a recording that
/// cannot be read, or that it was to stop.
[[nodiscard]] Result<SoundOverview> soundOverview(const std::string& url, std::size_t parts,
                                                  const std::stop_token& stop = {});

}  // namespace Nimbrel::RecordingProcessor
