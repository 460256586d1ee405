#pragma once

#include "Platform/MediaFile.h"

namespace Nimbrel::RecordingProcessor {

/// Times that we make are whole numbers of these in a second, which most rates of pictures divide, and 48 kHz as well.
inline constexpr double timescale = 600;

/// The time nearest to `seconds` on that scale.
[[nodiscard]] double onTimescale(double seconds);

/// How long a buffer plays, in seconds: a tenth of one where the file does not tell.
[[nodiscard]] double lengthOf(const MediaFile::SoundBuffer& buffer);

}  // namespace Nimbrel::RecordingProcessor
