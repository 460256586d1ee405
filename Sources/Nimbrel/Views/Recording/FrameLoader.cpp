#include "Views/Recording/FrameLoader.h"

#include "Foundation/Background.h"
#include "Platform/MediaFile.h"

#include <memory>
#include <utility>

namespace Nimbrel {

namespace {

/// A recording that is opened when it is first looked at, and again as long as that does not work.
class OpenRecording {
 public:
  explicit OpenRecording(std::string path) : path_(std::move(path)) {}

  [[nodiscard]] QImage frameAt(double seconds) {
    if (!grabber_) {
      auto opened = MediaFile::FrameGrabber::open(path_);
      if (!opened) return {};
      grabber_ = std::move(opened).value();
    }
    auto frame = grabber_->frameAt(seconds);
    if (frame) return std::move(frame).value();
    // Where it stands in the file is not known any more.
    grabber_.reset();
    return {};
  }

 private:
  std::string path_;
  std::unique_ptr<MediaFile::FrameGrabber> grabber_;
};

QImage fitted(const QImage& image, QSize limit) {
  if (image.width() <= limit.width() && image.height() <= limit.height()) return image;
  return image.scaled(limit, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

FrameLoader::FrameLoader(Grab grab, QThreadPool& threads, QObject* parent)
    : QObject(parent), grab_(std::move(grab)), threads_(threads) {}

void FrameLoader::load(double seconds, QSize limit) {
  const Request request{.seconds = seconds, .limit = limit};
  if (isBusy_) {
    next_ = request;
  } else {
    begin(request);
  }
}

void FrameLoader::begin(const Request& request) {
  isBusy_ = true;
  inBackground(
      this, threads_, [grab = grab_, request] { return grab(request.seconds, request.limit); },
      [this, seconds = request.seconds](const QImage& frame) {
        isBusy_ = false;
        if (const auto next = std::exchange(next_, std::nullopt)) begin(*next);
        Q_EMIT loaded(seconds, frame);
      });
}

FrameLoader::Grab grabFrom(const std::string& path) {
  return [recording = std::make_shared<OpenRecording>(path)](double seconds, QSize limit) {
    return fitted(recording->frameAt(seconds), limit);
  };
}

}  // namespace Nimbrel
