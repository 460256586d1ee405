#pragma once

#include "Platform/MediaFile.h"

#include <vector>

namespace Nimbrel::RecordingProcessor {

/// Finds out where sound is audible, from one buffer after the other. Keeps no samples. One thread at a time.
class AudibleRanges {
 public:
  /// The next buffer. It is audible as a whole when one of its samples is; looking ends at the first such.
  void add(const MediaFile::SoundBuffer& buffer);

  /// The stretches so far in the order in which they came, with room before and after each. They may reach beyond the
  /// end of the recording, not before its beginning.
  [[nodiscard]] std::vector<MediaFile::TimeRange> padded() const;

 private:
  std::vector<MediaFile::TimeRange> merged_;  ///< with short pauses as parts of them
};

}  // namespace Nimbrel::RecordingProcessor
