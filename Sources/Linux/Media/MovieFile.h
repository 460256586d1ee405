#pragma once

#include "Foundation/Result.h"
#include "Linux/Media/AvHandles.h"

#include <optional>
#include <string>

namespace Nimbrel::Media {

/// A QuickTime file that is being written: its tracks first, then packets, then the end. What it holds when it is
/// destroyed without its end depends on its form.
class MovieFile {
 public:
  enum class Form {
    Fragments,     ///< can be played at any moment up to about a second before it
    IndexInFront,  ///< of use when it has its end
  };

  /// Makes the file, or empties the one that is there.
  [[nodiscard]] static Result<MovieFile> create(const std::string& path, Form form);

  /// Adds a track for packets of that kind, whose times count in `timeBase`, and returns it; null without memory.
  [[nodiscard]] AVStream* addTrack(const AVCodecParameters& content, AVRational timeBase);

  /// To be called once, when all tracks are there.
  [[nodiscard]] std::optional<Error> begin();

  /// Takes over a packet, with times in `timeBase`; those of a track in the order of decoding. Tracks should stay
  /// within a few seconds of each other, since the file keeps them side by side.
  [[nodiscard]] std::optional<Error> write(AVPacket& packet, const AVStream& track, AVRational timeBase);

  /// To be called once; the file is then closed, though perhaps not yet on the disk.
  [[nodiscard]] std::optional<Error> end();

 private:
  MovieFile(OutputFormat format, Form form) : format_(std::move(format)), form_(form) {}

  OutputFormat format_;
  Form form_;
};

}  // namespace Nimbrel::Media
