#pragma once

#include "Foundation/Result.h"
#include "Screencapture/RecordedMovie.h"

#include <QImage>
#include <QSize>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Nimbrel::Screencapture {

/// The frame in a picture of that size: as it is where it fits exactly, else made smaller or larger as a whole, in the
/// middle of black.
[[nodiscard]] QImage fittedInto(const QSize& size, const QImage& frame);

/// Makes a movie of frames whose size is not known before the first one, and may change: it keeps that of the first
/// one, less an odd column and row, and later ones are fitted into it. One thread at a time.
class FrameRoll {
 public:
  using Time = RecordedMovie::Time;
  using OpenSound = std::function<std::unique_ptr<SoundSource>()>;

  /// Sound is opened with the first frame, and may be null. For the rest see RecordedMovie::begin().
  FrameRoll(std::string path, std::string kind, OpenSound openSound);

  /// What has been seen up to `time`; null when nothing has changed. After an error all that comes is passed over.
  [[nodiscard]] std::optional<Error> look(const QImage& frame, Time time);

  [[nodiscard]] bool hasBegun() const { return movie_ != nullptr; }

  /// Ends the movie; see RecordedMovie::finish(). The error is the first that there was. Again, it tells the same.
  [[nodiscard]] std::optional<Error> finish(Time end);

 private:
  [[nodiscard]] std::optional<Error> begin(const QSize& size);
  [[nodiscard]] std::optional<Error> add(const QImage& frame, Time time);

  std::string path_;
  std::string kind_;
  OpenSound openSound_;
  QSize size_;
  std::unique_ptr<RecordedMovie> movie_;
  std::optional<Error> failure_;
  bool isFinished_ = false;
};

}  // namespace Nimbrel::Screencapture
