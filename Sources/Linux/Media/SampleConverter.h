#pragma once

#include "Foundation/Result.h"
#include "Linux/Media/AvHandles.h"

#include <cstdint>
#include <span>
#include <vector>

namespace Nimbrel::Media {

/// Turns decoded sound of any form into signed 16-bit samples of the same rate and channels, interleaved.
class SampleConverter {
 public:
  SampleConverter() : form_(av_frame_alloc()) {}

  /// All samples of the frame; valid until the next call and as long as the frame.
  [[nodiscard]] Result<std::span<const std::int16_t>> samples(const AVFrame& sound);

 private:
  [[nodiscard]] int prepare(const AVFrame& sound);

  Frame form_;  ///< says what the converter takes; holds no sound
  Resampler converter_;
  std::vector<std::int16_t> samples_;
};

}  // namespace Nimbrel::Media
