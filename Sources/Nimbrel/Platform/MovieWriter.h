#pragma once

#include "Foundation/Result.h"

#include <QImage>
#include <QSize>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace Nimbrel {

/// Writes a movie while it happens: H.264, or the best encoder there is, in a QuickTime file, with one track of sound
/// if wanted. Until finish() the file is in fragments, so that what came before a crash can be played; finish() makes a
/// plain one of it with its index in front, by a hidden file beside it. The caller chooses a file of its own; one that
/// stands at the path is replaced. One thread at a time. Once an operation has failed all later ones do, with the same
/// error.
class MovieWriter {
 public:
  struct Sound {
    int sampleRate = 48000;  ///< a second
    int channels = 2;
  };
  struct Format {
    QSize size;                ///< pixels; an odd column or row at the right or bottom is left out
    int framesPerSecond = 30;  ///< what the encoder expects; frames may come at any times
    std::optional<Sound> sound;
  };

  /// Fails when the file cannot be made, nothing here encodes, or the size is below two pixels either way.
  [[nodiscard]] static Result<std::unique_ptr<MovieWriter>> open(const std::string& path, const Format& format);

  virtual ~MovieWriter() = default;

  /// A frame of the format's size that is shown from `time` on, in seconds since the beginning; each later than the one
  /// before it, or it is dropped.
  [[nodiscard]] virtual std::optional<Error> addFrame(const QImage& frame, double time) = 0;

  /// Sound that begins at `time`, channels interleaved, in the order of time. A gap is silent, and what overlaps is
  /// heard once; 20 ms either way are taken for an error of the clock and make neither. Sound that comes when pictures
  /// are two seconds ahead of it is too late: silence has taken its place. Without a track of sound it does nothing.
  [[nodiscard]] virtual std::optional<Error> addSound(std::span<const std::int16_t> samples, double time) = 0;

  /// Shows the last frame until `end`, writes what is left and the index, and closes the file, which is then on the
  /// disk. To be called once; without it the file stays in fragments, as it does where there is no room for a plain
  /// one. Fails when there was no frame.
  [[nodiscard]] virtual std::optional<Error> finish(double end) = 0;
};

}  // namespace Nimbrel
