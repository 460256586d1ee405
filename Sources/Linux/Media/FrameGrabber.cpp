#include "Linux/Media/AvError.h"
#include "Linux/Media/FrameConverter.h"
#include "Linux/Media/MediaInput.h"
#include "Platform/MediaFile.h"

#include <algorithm>
#include <utility>

namespace Nimbrel::MediaFile {

namespace {

using Media::MediaInput;

/// Not worth jumping over, since the decoder would have to start anew.
constexpr double shortWay = 1;

class MovieFrameGrabber final : public FrameGrabber {
 public:
  explicit MovieFrameGrabber(MediaInput input)
      : input_(std::move(input)),
        converter_({input_.track().codecpar->width, input_.track().codecpar->height}, input_.displayMatrix()),
        current_(av_frame_alloc()) {}

  /// Comes to the first picture.
  [[nodiscard]] std::optional<Error> begin() {
    if (!current_) return Media::avError(AVERROR(ENOMEM));
    if (auto failure = look()) return failure;
    if (!next_) return Error{"The recording has no pictures"};
    firstTime_ = next_->time;
    return step();
  }

  Result<QImage> frameAt(double time) override {
    if (auto failure = moveTo(time)) return *failure;
    if (image_.isNull()) {
      auto image = converter_.image(*current_);
      if (!image) return image.error();
      image_ = std::move(image).value();
    }
    return image_;
  }

 private:
  [[nodiscard]] bool isShownBy(double pictureTime, double time) const {
    return pictureTime <= time + Media::pictureTolerance;
  }

  [[nodiscard]] std::optional<Error> moveTo(double time) {
    const double wanted = time > firstTime_ ? time : firstTime_;
    const bool isBehind = !isShownBy(currentTime_, wanted);
    const bool isFarAhead = next_ && wanted - next_->time > shortWay && !input_.isNear(wanted);
    if (isBehind || isFarAhead) {
      if (auto failure = jump(wanted)) return failure;
    }
    while (next_ && isShownBy(next_->time, wanted)) {
      if (auto failure = step()) return failure;
    }
    return std::nullopt;
  }

  [[nodiscard]] std::optional<Error> jump(double time) {
    next_.reset();
    if (auto failure = input_.seek(time)) return failure;
    if (auto failure = look()) return failure;
    return next_ ? step() : Error{"The recording is damaged"};
  }

  /// Makes the next picture, if there is one, the current one.
  [[nodiscard]] std::optional<Error> step() {
    if (!next_) return std::nullopt;
    image_ = {};
    av_frame_unref(current_.get());
    if (const int code = av_frame_ref(current_.get(), next_->frame); code < 0) return Media::avError(code);
    currentTime_ = next_->time;
    return look();
  }

  [[nodiscard]] std::optional<Error> look() {
    auto decoded = input_.next();
    if (!decoded) return decoded.error();
    next_ = std::move(decoded).value();
    return std::nullopt;
  }

  MediaInput input_;
  Media::FrameConverter converter_;
  Media::Frame current_;
  std::optional<Media::DecodedFrame> next_;  ///< absent behind the last one
  double firstTime_ = 0;
  double currentTime_ = 0;
  QImage image_;  ///< of the current picture, once it was asked for
};

}  // namespace

Result<std::unique_ptr<FrameGrabber>> FrameGrabber::open(const std::string& path) {
  auto input = MediaInput::open(path);
  if (!input) return input.error();
  if (auto failure = input.value().choose(MediaInput::Kind::Pictures)) return *failure;
  auto grabber = std::make_unique<MovieFrameGrabber>(std::move(input).value());
  if (auto failure = grabber->begin()) return *failure;
  return std::unique_ptr<FrameGrabber>(std::move(grabber));
}

}  // namespace Nimbrel::MediaFile
