#pragma once

#include "Platform/MediaFile.h"

#include <span>

/// Which moments of a recording become frames of a GIF. Times are seconds.
namespace Nimbrel::RecordingProcessor {

/// Frames at an even distance over a whole composition, at its real speed: a long one has fewer of them a second than
/// was asked for, so that their number is bounded.
struct GifTiming {
  int frameCount = 1;
  double rate = 0;  ///< frames a second

  /// How long each is shown.
  [[nodiscard]] double delay() const { return 1 / rate; }
};

/// For a composition that plays so long; 1 frame at least, 180 at most, whatever `fps` is.
[[nodiscard]] GifTiming gifTiming(double duration, int fps);

/// The moment of a composition that a frame shows.
[[nodiscard]] double frameTime(const GifTiming& timing, int frame, double duration);

/// The moment of the recording that is seen at `time` of a composition; where two stretches meet it is the beginning of
/// the latter. At or behind the end of all it is the end of the last one. There must be a stretch.
[[nodiscard]] double sourceTime(std::span<const MediaFile::TimeRange> stretches, double time);

}  // namespace Nimbrel::RecordingProcessor
