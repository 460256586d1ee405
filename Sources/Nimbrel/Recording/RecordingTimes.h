#pragma once

namespace Nimbrel::RecordingProcessor {

/// Times that we make are whole numbers of these in a second, which most rates of pictures divide, and 48 kHz as well.
inline constexpr double timescale = 600;

/// The time nearest to `seconds` on that scale.
[[nodiscard]] double onTimescale(double seconds);

}  // namespace Nimbrel::RecordingProcessor
