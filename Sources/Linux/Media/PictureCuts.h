#pragma once

#include "Linux/Media/Cut.h"
#include "Linux/Media/MediaInput.h"
#include "Linux/Media/MovieEncoder.h"

#include <cstdint>
#include <optional>

namespace Nimbrel::Media {

/// Takes the pictures of cuts out of a recording and encodes them. Each cut begins with the picture that is shown at
/// its start, however long it has been shown by then.
class PictureCuts {
 public:
  /// `input`, which has chosen its pictures, and `encoder` are borrowed.
  PictureCuts(MediaInput& input, MovieEncoder& encoder) : input_(input), encoder_(encoder) {}

  /// Cuts come in the order of their targets; quickest where that is the order of time as well. Before each picture
  /// that is decoded `pace` is asked.
  [[nodiscard]] std::optional<Error> write(const Cut& cut, const Pace& pace);

  /// When the last picture is no longer shown, in pictureTick; 0 when there was none.
  [[nodiscard]] std::int64_t end() const { return end_; }

 private:
  struct Held {
    Frame frame;
    std::int64_t start = 0;
    std::int64_t end = 0;  ///< as far as the recording tells
  };

  [[nodiscard]] std::optional<Error> goTo(const Cut& cut, const Pace& pace);
  [[nodiscard]] bool isOnTheWay(double time) const;
  [[nodiscard]] std::optional<Error> advance();
  [[nodiscard]] std::optional<Error> encodeShown(std::int64_t target);

  MediaInput& input_;
  MovieEncoder& encoder_;
  std::optional<Held> shown_;     ///< the picture at which we are
  std::optional<Held> upcoming_;  ///< the one that takes its place; absent at the end
  std::int64_t end_ = 0;
  std::int64_t last_ = -1;  ///< when the last picture is shown
};

}  // namespace Nimbrel::Media
