#include "Screencapture/RecordedMovie.h"

#include "Platform/MediaFile.h"
#include "Platform/MetadataStore.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace Nimbrel::Screencapture {

using namespace std::chrono_literals;

namespace {

// A still screen is written so often, or the fragments would wait for it to change.
constexpr auto longestStill = 250ms;

// The last frame is seen for so long, be it stopped at once.
constexpr auto shortestSight = 33ms;

/// Takes a name that is free.
std::optional<Error> takeName(const std::string& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (file < 0) return Error{"The recording cannot be written: " + std::string(std::strerror(errno))};
  ::close(file);
  return std::nullopt;
}

bool canBePlayed(const std::string& path) {
  const auto pictures = MediaFile::FrameGrabber::open(path);
  return pictures && pictures.value()->frameAt(0).hasValue();
}

}  // namespace

Result<std::unique_ptr<RecordedMovie>> RecordedMovie::begin(const std::string& path, const QSize& size,
                                                            std::string kind, std::unique_ptr<SoundSource> sound) {
  if (auto failure = takeName(path)) return *failure;
  MovieWriter::Format format{.size = size};
  if (sound) format.sound = {.sampleRate = SoundSource::sampleRate, .channels = SoundSource::channels};
  auto writer = MovieWriter::open(path, format);
  if (!writer) {
    ::unlink(path.c_str());
    return writer.error();
  }
  static_cast<void>(MetadataStore::markScreenCapture(path, kind));
  return std::unique_ptr<RecordedMovie>(
      new RecordedMovie(path, std::move(kind), std::move(writer).value(), std::move(sound)));
}

RecordedMovie::RecordedMovie(std::string path, std::string kind, std::unique_ptr<MovieWriter> writer,
                             std::unique_ptr<SoundSource> sound)
    : path_(std::move(path)), kind_(std::move(kind)), writer_(std::move(writer)), sound_(std::move(sound)) {}

RecordedMovie::~RecordedMovie() {
  writer_.reset();
  if (!isKept_) ::unlink(path_.c_str());
}

double RecordedMovie::seconds(Time time) const { return std::chrono::duration<double>(time - begun_).count(); }

std::optional<Error> RecordedMovie::addFrame(const QImage& frame, Time time) {
  if (!std::exchange(hasBegun_, true)) begun_ = time;
  last_ = frame;
  lastAdded_ = time;
  if (auto failure = writer_->addFrame(frame, seconds(time))) return failure;
  return addSound();
}

std::optional<Error> RecordedMovie::goOn(Time time) {
  if (!hasBegun_) return std::nullopt;
  if (time - lastAdded_ >= longestStill) return addFrame(last_, time);
  return addSound();
}

std::optional<Error> RecordedMovie::addSound() {
  if (!sound_) return std::nullopt;
  for (auto& heard : sound_->take()) {
    const auto block = soundFrom(std::move(heard), begun_);
    if (block.samples.empty()) continue;
    if (auto failure = writer_->addSound(block.samples, seconds(block.start))) return failure;
  }
  return std::nullopt;
}

std::optional<Error> RecordedMovie::finish(Time end) {
  if (!hasBegun_) return Error{"Nothing was recorded"};
  auto failure = addSound();
  if (!failure) failure = writer_->finish(seconds(std::max(end, lastAdded_ + shortestSight)));
  writer_.reset();
  isKept_ = !failure || canBePlayed(path_);
  if (isKept_) static_cast<void>(MetadataStore::markScreenCapture(path_, kind_));
  return failure;
}

}  // namespace Nimbrel::Screencapture
