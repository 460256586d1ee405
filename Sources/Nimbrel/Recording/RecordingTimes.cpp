#include "Recording/RecordingTimes.h"

#include <cmath>

namespace Nimbrel::RecordingProcessor {

double onTimescale(double seconds) { return std::round(seconds * timescale) / timescale; }

double lengthOf(const MediaFile::SoundBuffer& buffer) {
  constexpr double lengthWhenUnknown = 0.1;
  const double length = buffer.length.value_or(0);
  return length > 0 ? length : lengthWhenUnknown;
}

}  // namespace Nimbrel::RecordingProcessor
