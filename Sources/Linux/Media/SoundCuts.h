#pragma once

#include "Linux/Media/Cut.h"
#include "Linux/Media/MediaInput.h"
#include "Linux/Media/MovieEncoder.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace Nimbrel::Media {

/// Takes the sound of cuts out of a recording, exact to the sample, and encodes it. Where the recording has none,
/// there is silence if anything follows. Where each cut begins is counted from the beginning of all, so that roundings
/// do not add up.
class SoundCuts {
 public:
  /// `input`, which has chosen its sound, and `encoder` are borrowed.
  SoundCuts(MediaInput& input, MovieEncoder& encoder, std::vector<Cut> cuts);

  /// Goes on until so many seconds are made, or a little further.
  [[nodiscard]] std::optional<Error> writeUntil(double target);

  /// Whether there was any sound.
  [[nodiscard]] bool hasWritten() const { return hasWritten_; }

 private:
  /// Samples of each channel.
  using Position = std::int64_t;

  [[nodiscard]] Position position(double time) const;
  [[nodiscard]] std::optional<Error> writeSome();
  [[nodiscard]] std::optional<Error> beginCut();
  [[nodiscard]] std::optional<Error> fetch();
  [[nodiscard]] std::optional<Error> writeSound(Position from, Position count);
  [[nodiscard]] std::optional<Error> writeSilence();
  void leaveSilent(Position count);

  MediaInput& input_;
  MovieEncoder& encoder_;
  std::vector<Cut> cuts_;
  std::size_t cut_ = 0;    ///< the one at which we are
  bool hasBegun_ = false;  ///< the cut
  Position reached_ = 0;   ///< in what is made
  Position silence_ = 0;   ///< so much of which is still to be written
  bool hasWritten_ = false;

  std::optional<DecodedFrame> frame_;  ///< absent at the end, and before the first one
  Position frameStart_ = 0;            ///< in the recording
  Position frameEnd_ = 0;
};

}  // namespace Nimbrel::Media
