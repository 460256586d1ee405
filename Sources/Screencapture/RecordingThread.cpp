#include "Screencapture/RecordingThread.h"

#include "Screencapture/FramePacing.h"
#include "Screencapture/RecordedMovie.h"
#include "Screencapture/ScreenFrames.h"
#include "Screencapture/SoundSource.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace Nimbrel::Screencapture {

using namespace std::chrono_literals;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int framesPerSecond = 30;
constexpr auto longestWaitForSound = 500ms;

void waitUntil(Clock::time_point time, const std::stop_token& stop) {
  std::mutex mutex;
  std::unique_lock lock(mutex);
  std::condition_variable_any asked;
  asked.wait_until(lock, stop, time, [] { return false; });
}

}  // namespace

RecordingThread::RecordingThread(Plan plan, Events events)
    : plan_(std::move(plan)), events_(std::move(events)), thread_([this](const std::stop_token& stop) { run(stop); }) {}

RecordingThread::~RecordingThread() { isGivenUp_ = true; }

std::optional<Error> RecordingThread::finish() {
  stop();
  thread_.join();
  return std::move(failure_);
}

void RecordingThread::run(const std::stop_token& stop) {
  failure_ = record(stop);
  if (!isGivenUp_) events_.ended(failure_);
}

std::optional<Error> RecordingThread::record(const std::stop_token& stop) {
  const auto frames = ScreenFrames::open(plan_.area);
  if (!frames) return frames.error();
  const auto movie =
      RecordedMovie::begin(plan_.path, plan_.area.size(), plan_.kind, SoundSource::open(longestWaitForSound));
  if (!movie) return movie.error();

  const FramePacing pacing(Clock::now(), Clock::duration(1s) / framesPerSecond);
  bool hasBegun = false;
  do {
    const auto now = Clock::now();
    const auto frame = frames.value()->next();
    if (!frame && !hasBegun) return frame.error();
    if (!frame) break;
    const auto& picture = frame.value();
    // What fails here fails in finish() again, which then sees what can be saved.
    if (picture ? movie.value()->addFrame(*picture, now) : movie.value()->goOn(now)) break;
    if (!std::exchange(hasBegun, true)) events_.began();
    waitUntil(pacing.next(Clock::now()), stop);
  } while (!stop.stop_requested());
  if (isGivenUp_) return std::nullopt;
  return movie.value()->finish(Clock::now());
}

}  // namespace Nimbrel::Screencapture
