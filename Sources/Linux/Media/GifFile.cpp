#include "Platform/GifFile.h"

#include "Linux/Media/GifCanvas.h"
#include "Linux/Media/GifStream.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace Nimbrel {

namespace {

/// Limits of the format.
constexpr int longestSide = 65535;
constexpr std::int64_t longestDelay = 65535;

/// Viewers show for a tenth of a second what asks for less than this.
constexpr std::int64_t shortestDelay = 2;

int delayBetween(std::int64_t start, std::int64_t end) { return static_cast<int>(std::min(end - start, longestDelay)); }

class AnimatedGif final : public GifFile {
 public:
  explicit AnimatedGif(std::unique_ptr<Media::GifStream> stream) : stream_(std::move(stream)) {}

  bool add(const QImage& frame, double delay) override {
    if (!accepts(frame)) return false;
    constexpr double longestTime = 1e9;
    if (delay > 0) time_ = std::min(time_ + delay, longestTime);
    auto opaque = frame.convertToFormat(QImage::Format_RGB32);
    if (hundredths() - end_ < shortestDelay) {
      waiting_ = std::move(opaque);
      return !failed_;
    }
    waiting_ = {};
    return put(opaque);
  }

  bool finish() override {
    if (!waiting_.isNull()) endWaiting();
    return hasImage_ && !failed_ && stream_->finish();
  }

 private:
  [[nodiscard]] bool accepts(const QImage& frame) {
    if (frame.isNull() || frame.width() > longestSide || frame.height() > longestSide) return false;
    if (!size_.isValid()) size_ = frame.size();
    return frame.size() == size_;
  }

  [[nodiscard]] std::int64_t hundredths() const { return std::llround(time_ * 100); }

  /// Shows a frame from the end of the one before it up to now.
  bool put(const QImage& frame) {
    const auto image = canvas_.next(frame);
    if (!hasImage_) failed_ = !stream_->begin(size_, *image.palette.palette);
    hasImage_ = true;
    start_ = std::exchange(end_, hundredths());
    failed_ = failed_ || !stream_->put(image, delayBetween(start_, end_));
    return !failed_;
  }

  /// Nothing comes that could take over the time of the frame that was too short.
  void endWaiting() {
    if (!hasImage_) {
      put(waiting_);
    } else if (hundredths() > end_) {
      failed_ = failed_ || !stream_->setLastDelay(delayBetween(start_, hundredths()));
    }
  }

  std::unique_ptr<Media::GifStream> stream_;
  Media::GifCanvas canvas_;
  QSize size_;
  QImage waiting_;          ///< the last frame, when it was too short to be shown
  double time_ = 0;         ///< all delays so far
  std::int64_t start_ = 0;  ///< of the last image, in hundredths
  std::int64_t end_ = 0;    ///< of the same
  bool hasImage_ = false;
  bool failed_ = false;
};

}  // namespace

std::unique_ptr<GifFile> GifFile::create(const std::string& path) {
  auto stream = Media::GifStream::create(path);
  return stream ? std::make_unique<AnimatedGif>(std::move(stream)) : nullptr;
}

}  // namespace Nimbrel
