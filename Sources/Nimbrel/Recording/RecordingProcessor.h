#pragma once

#include "Foundation/Result.h"
#include "Platform/MediaFile.h"

#include <optional>
#include <stop_token>
#include <string>
#include <vector>

/// Work on a finished screen recording: how long it is, where it is audible, and what becomes of a part of it. No
/// state. Any thread but the main one, since all of it may take long. Times are seconds; those of stretches are whole
/// numbers of 1/600. An Error's words are for people.
namespace Nimbrel::RecordingProcessor {

using MediaFile::Supervision;
using MediaFile::TimeRange;

/// What is kept of a recording: stretches of it that play one behind the other.
struct Composition {
  std::string source;                ///< the recording
  std::vector<TimeRange> stretches;  ///< times of the recording; never empty

  /// How long they play in all.
  [[nodiscard]] double duration() const;
};

/// The length of the recording, never below 0.1.
[[nodiscard]] Result<double> duration(const std::string& url);

/// The stretches of the first sound track that are not silent, in the order of time, with a little room around each, so
/// that they may touch or overlap; a pause below 0.55 is no pause. Empty without sound.
[[nodiscard]] Result<std::vector<TimeRange>> audibleRanges(const std::string& url, const std::stop_token& stop = {});

/// The window from `start` to `end`, held within the recording but never shorter than 0.1; without its silent stretches
/// if wanted and if that leaves anything.
[[nodiscard]] Result<Composition> composition(const std::string& url, double start, double end, bool removeSilence,
                                              const std::stop_token& stop = {});

/// Writes the composition as a movie. The target is taken from the start; nothing is ever replaced, and what is
/// unfinished is removed. Absent when done.
[[nodiscard]] std::optional<Error> exportMovie(const Composition& composition, const std::string& target,
                                               const Supervision& supervision);

/// Writes the composition of these arguments as a movie beside the recording, "X.trimmed.mov" or the first such name
/// that is free, and returns its path. The name is taken from the start; what is unfinished is removed.
[[nodiscard]] Result<std::string> trimmedCopy(const std::string& url, double start, double end, bool removeSilence,
                                              const Supervision& supervision);

/// Writes an animated GIF beside the recording, at most 180 frames, at their real speed, and returns its path. The name
/// is taken from the start; what is unfinished is removed.
[[nodiscard]] Result<std::string> gif(const std::string& url, double start, double end, int fps, bool removeSilence,
                                      const Supervision& supervision);

}  // namespace Nimbrel::RecordingProcessor
