#pragma once

#include "Platform/MediaFile.h"

#include <span>
#include <vector>

namespace Nimbrel::RecordingProcessor {

/// The shortest length that a recording or a window is given, in seconds.
inline constexpr double shortestLength = 0.1;

/// The window from `start` to `end` of a recording of that length: within it, but never shorter than 0.1, even where it
/// then reaches beyond the end.
[[nodiscard]] MediaFile::TimeRange windowOf(double start, double end, double duration);

/// What is audible within the window, or all of it where nothing is.
[[nodiscard]] std::vector<MediaFile::TimeRange> keptOf(const MediaFile::TimeRange& window,
                                                       std::span<const MediaFile::TimeRange> audible);

/// What keptOf() leaves out of the window, in the order of time; nothing where nothing is audible.
[[nodiscard]] std::vector<MediaFile::TimeRange> droppedOf(const MediaFile::TimeRange& window,
                                                          std::span<const MediaFile::TimeRange> audible);

/// A moment at which the last picture is shown that is kept of the window.
[[nodiscard]] double lastMoment(const MediaFile::TimeRange& window);

}  // namespace Nimbrel::RecordingProcessor
