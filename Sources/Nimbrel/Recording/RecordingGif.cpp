#include "Foundation/FilePath.h"
#include "Model/ShotFile.h"
#include "Platform/FileSystem.h"
#include "Platform/GifFile.h"
#include "Recording/GifTiming.h"
#include "Recording/RecordingProcessor.h"
#include "Recording/RecordingTimes.h"

#include <cstdio>
#include <memory>
#include <utility>

namespace Nimbrel::RecordingProcessor {

namespace {

/// A GIF with a name of its own beside the recording, which is removed unless it is finished.
class NewGif {
 public:
  explicit NewGif(const std::string& recording)
      : wanted_(FilePath::join(FilePath::folder(recording), std::string(FilePath::baseName(recording)) + ".gif")) {
    do {
      path_ = ShotFile::uniqueURL(wanted_);
      file_ = GifFile::create(path_);
    } while (!file_ && wasTaken());
  }
  ~NewGif() {
    if (!file_) return;
    file_.reset();
    std::remove(path_.c_str());
  }
  NewGif(const NewGif&) = delete;
  NewGif& operator=(const NewGif&) = delete;

  [[nodiscard]] bool isMade() const { return file_ != nullptr; }
  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] bool add(const QImage& frame, double delay) { return file_->add(frame, delay); }

  /// The file stays only if this works.
  [[nodiscard]] bool finish() {
    if (!file_->finish()) return false;
    file_.reset();
    return true;
  }

 private:
  /// Whether somebody else was quicker, but there are names left.
  [[nodiscard]] bool wasTaken() const {
    return FileSystem::isTaken(path_) && !FileSystem::isTaken(ShotFile::uniqueURL(wanted_));
  }

  std::string wanted_;
  std::string path_;
  std::unique_ptr<GifFile> file_;
};

Error unfinished() { return {"Could not finish the GIF"}; }

std::optional<Error> addFrames(NewGif& gif, const Composition& kept, int fps, const Supervision& supervision) {
  auto opened = MediaFile::FrameGrabber::open(kept.source);
  if (!opened) return opened.error();
  const auto grabber = std::move(opened).value();
  const double duration = onTimescale(kept.duration());
  const auto timing = gifTiming(duration, fps);
  for (int i = 0; i < timing.frameCount; ++i) {
    if (supervision.stop.stop_requested()) return Error{"The export was stopped"};
    const auto frame = grabber->frameAt(sourceTime(kept.stretches, frameTime(timing, i, duration)));
    if (!frame) return frame.error();
    if (!gif.add(frame.value(), timing.delay())) return unfinished();
    if (supervision.progress) supervision.progress((i + 1.0) / timing.frameCount);
  }
  return std::nullopt;
}

}  // namespace

Result<std::string> gif(const std::string& url, double start, double end, int fps, bool removeSilence,
                        const Supervision& supervision) {
  const auto kept = composition(url, start, end, removeSilence);
  if (!kept) return kept.error();
  NewGif gif(url);
  if (!gif.isMade()) return Error{"Could not create the GIF"};
  if (auto failure = addFrames(gif, kept.value(), fps, supervision)) return *failure;
  if (!gif.finish()) return unfinished();
  return gif.path();
}

}  // namespace Nimbrel::RecordingProcessor
