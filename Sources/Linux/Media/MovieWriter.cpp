#include "Platform/MovieWriter.h"

#include "Foundation/FilePath.h"
#include "Foundation/Log.h"
#include "Linux/Files/ErrorWords.h"
#include "Linux/Files/Flushing.h"
#include "Linux/Files/HiddenFile.h"
#include "Linux/Media/AvError.h"
#include "Linux/Media/MovieEncoder.h"
#include "Linux/Media/Remux.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <utility>
#include <vector>

namespace Nimbrel {

namespace {

/// Sound that is so little beside its time, in seconds, is taken to follow what came before: clocks are no better.
constexpr double soundTolerance = 0.02;
/// Sound that is so late, in seconds, is not waited for any longer: the file cannot be written without its share.
constexpr double soundPatience = 2;

int flushFile(const std::string& path) {
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  return file.isOpen() && ::fsync(file.number()) == 0 ? 0 : errno;
}

/// Puts a plain file in the place of one in fragments; the latter stays when that fails.
std::optional<Error> makePlain(const std::string& path) {
  struct stat facts {};
  if (::stat(path.c_str(), &facts) != 0) return Error{wordsFor(errno)};
  HiddenFile plain(std::string(FilePath::folder(path)), HiddenFile::Access::owner);
  if (plain.error() != 0) return Error{wordsFor(plain.error())};
  if (auto failure = Media::remux(path, plain.path())) return failure;
  ::fchmod(plain.number(), facts.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO));
  if (::fsync(plain.number()) != 0) return Error{wordsFor(errno)};
  const int error = plain.replace(path);
  return error == 0 ? std::nullopt : std::optional(Error{wordsFor(error)});
}

/// The pixels of an image as the libraries see them; only valid as long as the image.
void refer(AVFrame& frame, const QImage& image) {
  frame.format = AV_PIX_FMT_0RGB32;
  frame.width = image.width();
  frame.height = image.height();
  frame.data[0] = const_cast<std::uint8_t*>(image.constBits());
  frame.linesize[0] = static_cast<int>(image.bytesPerLine());
}

Media::MovieFormat movieFormat(const MovieWriter::Format& format) {
  Media::MovieFormat result;
  result.pictures = Media::PictureFormat{.width = format.size.width() & ~1,
                                         .height = format.size.height() & ~1,
                                         .framesPerSecond = {std::max(1, format.framesPerSecond), 1},
                                         .isLive = true};
  if (format.sound) result.sound = {.sampleRate = format.sound->sampleRate, .channels = format.sound->channels};
  return result;
}

class EncodingMovieWriter final : public MovieWriter {
 public:
  EncodingMovieWriter(std::string path, const Format& format, Media::MovieEncoder encoder)
      : path_(std::move(path)),
        sound_(format.sound.value_or(Sound{})),
        hasSound_(format.sound.has_value()),
        encoder_(std::move(encoder)),
        frame_(av_frame_alloc()) {}

  std::optional<Error> addFrame(const QImage& frame, double time) override {
    return attempt([&] { return writeFrame(frame, Media::pictureTicks(time)); });
  }

  std::optional<Error> addSound(std::span<const std::int16_t> samples, double time) override {
    return hasSound_ ? attempt([&] { return placeSound(samples, soundPosition(time)); }) : std::nullopt;
  }

  std::optional<Error> finish(double end) override {
    return attempt([&] { return finishFile(Media::pictureTicks(end)); });
  }

 private:
  template <class Work>
  std::optional<Error> attempt(Work work) {
    if (!failure_) failure_ = work();
    return failure_;
  }

  [[nodiscard]] std::int64_t soundPosition(double time) const { return std::llround(time * sound_.sampleRate); }

  std::optional<Error> writeFrame(const QImage& frame, std::int64_t ticks) {
    if (ticks <= lastTicks_) return std::nullopt;
    if (hasSound_) {
      const double late = static_cast<double>(ticks) * av_q2d(Media::pictureTick) - soundPatience;
      if (auto failure = addSilence(soundPosition(late) - soundEnd_)) return failure;
    }
    const auto image = frame.format() == QImage::Format_RGB32 ? frame : frame.convertToFormat(QImage::Format_RGB32);
    if (image.isNull()) return Error{"A picture is missing"};
    av_frame_unref(frame_.get());
    refer(*frame_, image);
    lastTicks_ = ticks;
    return encoder_.addPicture(*frame_, ticks);
  }

  std::optional<Error> placeSound(std::span<const std::int16_t> samples, std::int64_t position) {
    const auto gap = position - soundEnd_;
    const bool isInPlace = std::abs(gap) <= soundPosition(soundTolerance);
    if (gap > 0 && !isInPlace) {
      if (auto failure = addSilence(gap)) return failure;
    }
    const auto heard = std::int64_t{isInPlace ? 0 : std::max<std::int64_t>(0, -gap)} * sound_.channels;
    if (heard >= std::ssize(samples)) return std::nullopt;
    return appendSound(samples.subspan(static_cast<std::size_t>(heard)));
  }

  std::optional<Error> addSilence(std::int64_t count) {
    const std::vector<std::int16_t> second(static_cast<std::size_t>(sound_.sampleRate) * sound_.channels);
    for (; count > 0; count -= sound_.sampleRate) {
      const auto length = std::min<std::int64_t>(count, sound_.sampleRate) * sound_.channels;
      if (auto failure = appendSound(std::span(second).first(static_cast<std::size_t>(length)))) return failure;
    }
    return std::nullopt;
  }

  std::optional<Error> appendSound(std::span<const std::int16_t> samples) {
    const auto count = static_cast<int>(std::ssize(samples) / sound_.channels);
    av_frame_unref(frame_.get());
    frame_->format = AV_SAMPLE_FMT_S16;
    frame_->sample_rate = sound_.sampleRate;
    frame_->nb_samples = count;
    av_channel_layout_default(&frame_->ch_layout, sound_.channels);
    frame_->data[0] = const_cast<std::uint8_t*>(reinterpret_cast<const std::uint8_t*>(samples.data()));
    soundEnd_ += count;
    return encoder_.addSound(*frame_, 0, count);
  }

  std::optional<Error> finishFile(std::int64_t end) {
    if (lastTicks_ < 0) return Error{"Nothing was recorded"};
    if (auto failure = encoder_.finish(end)) return failure;
    if (const auto failure = makePlain(path_)) {
      // It is whole all the same, and programs that play movies know fragments.
      Log::write("A recording stays in fragments: " + failure->message);
      if (const int error = flushFile(path_); error != 0) return Error{wordsFor(error)};
    }
    const int error = flushFolder(std::string(FilePath::folder(path_)));
    return error == 0 ? std::nullopt : std::optional(Error{wordsFor(error)});
  }

  std::string path_;
  Sound sound_;
  bool hasSound_;
  Media::MovieEncoder encoder_;
  Media::Frame frame_;  ///< refers to what is handed in, during a call
  std::int64_t lastTicks_ = -1;
  std::int64_t soundEnd_ = 0;  ///< samples of each channel
  std::optional<Error> failure_;
};

}  // namespace

Result<std::unique_ptr<MovieWriter>> MovieWriter::open(const std::string& path, const Format& format) {
  if (format.size.width() < 2 || format.size.height() < 2) return Error{"The area is too small for a movie"};
  auto encoder = Media::MovieEncoder::make(movieFormat(format));
  if (!encoder) return encoder.error();
  if (auto failure = encoder.value().open(path, Media::MovieFile::Form::Fragments)) return *failure;
  return std::unique_ptr<MovieWriter>(std::make_unique<EncodingMovieWriter>(path, format, std::move(encoder).value()));
}

}  // namespace Nimbrel
