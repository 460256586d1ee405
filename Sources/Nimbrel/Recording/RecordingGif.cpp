#include "Platform/GifFile.h"
#include "Recording/GifTiming.h"
#include "Recording/NewName.h"
#include "Recording/RecordingProcessor.h"
#include "Recording/RecordingTimes.h"

#include <memory>
#include <utility>

namespace Nimbrel::RecordingProcessor {

namespace {

Error unfinished() { return {"Could not finish the GIF"}; }

std::optional<Error> addFrames(GifFile& gif, const Composition& kept, int fps, const Supervision& supervision) {
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
  std::unique_ptr<GifFile> gif;
  const auto path = takeNewName(url, ".gif", [&](const std::string& name) {
    gif = GifFile::create(name);
    return gif != nullptr;
  });
  if (!path) return Error{"Could not create the GIF"};
  const auto kept = composition(url, start, end, removeSilence, supervision.stop);
  if (!kept) return kept.error();
  if (auto failure = addFrames(*gif, kept.value(), fps, supervision)) return *failure;
  if (!gif->finish()) return unfinished();
  return *path;
}

}  // namespace Nimbrel::RecordingProcessor
