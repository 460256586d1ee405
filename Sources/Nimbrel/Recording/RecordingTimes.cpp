#include "Recording/RecordingTimes.h"

#include <cmath>

namespace Nimbrel::RecordingProcessor {

double onTimescale(double seconds) { return std::round(seconds * timescale) / timescale; }

}  // namespace Nimbrel::RecordingProcessor
