#include "Platform/MediaFile.h"

#include "Linux/Files/ErrorWords.h"
#include "Linux/Files/ReservedFile.h"
#include "Linux/Media/PictureCuts.h"
#include "Linux/Media/SoundCuts.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace Nimbrel::MediaFile {

namespace {

using namespace Media;

/// The tracks of a recording that are taken over, each through a decoder of its own.
struct Source {
  std::optional<MediaInput> pictures;
  std::optional<MediaInput> sound;
};

/// The first track of a kind; nothing when there is none.
Result<std::optional<MediaInput>> trackOf(const std::string& path, MediaInput::Kind kind) {
  auto input = MediaInput::open(path);
  if (!input) return input.error();
  if (!input.value().has(kind)) return std::optional<MediaInput>();
  if (auto failure = input.value().choose(kind)) return *failure;
  return std::optional(std::move(input).value());
}

Result<Source> openSource(const std::string& path) {
  auto pictures = trackOf(path, MediaInput::Kind::Pictures);
  if (!pictures) return pictures.error();
  auto sound = trackOf(path, MediaInput::Kind::Sound);
  if (!sound) return sound.error();
  if (!pictures.value() && !sound.value()) return Error{"The recording has neither pictures nor sound"};
  return Source{.pictures = std::move(pictures).value(), .sound = std::move(sound).value()};
}

PictureFormat pictureFormat(const MediaInput& input) {
  const AVCodecContext& decoder = input.decoder();
  return {.width = decoder.width & ~1,
          .height = decoder.height & ~1,
          .framesPerSecond = input.frameRate(),
          .pixelAspect = decoder.sample_aspect_ratio,
          .colours = coloursOf(decoder)};
}

MovieFormat formatOf(const Source& source) {
  MovieFormat format;
  if (source.pictures) {
    format.pictures = pictureFormat(*source.pictures);
    if (const auto* matrix = source.pictures->displayMatrix()) {
      std::copy_n(matrix, 9, format.displayMatrix.emplace().begin());
    }
  }
  if (source.sound) {
    const AVCodecContext& decoder = source.sound->decoder();
    format.sound = {.sampleRate = decoder.sample_rate, .channels = decoder.ch_layout.nb_channels};
  }
  return format;
}

/// Asks now and then whether to stop, and tells how far the work is.
class Supervisor {
 public:
  Supervisor(const Supervision& supervision, double total) : supervision_(supervision), total_(total) {}

  [[nodiscard]] std::optional<Error> reached(double target) const {
    if (supervision_.stop.stop_requested()) return Error{"The export was stopped"};
    if (supervision_.progress && total_ > 0) supervision_.progress(std::clamp(target / total_, 0.0, 1.0));
    return std::nullopt;
  }

  /// Tells that all is done, unless it was stopped on the last stretch of the way.
  [[nodiscard]] std::optional<Error> done() const { return reached(total_); }

 private:
  const Supervision& supervision_;
  double total_;
};

/// Writes pictures and sound side by side, as the file wants them.
std::optional<Error> writeTracks(Source& source, const std::vector<Cut>& cuts, MovieEncoder& encoder,
                                 const Supervisor& supervisor) {
  std::optional<SoundCuts> sound;
  if (source.sound) sound.emplace(*source.sound, encoder, cuts);
  double made = 0;
  const Pace pace = [&](double target) -> std::optional<Error> {
    // In small steps, since a picture may stand for hours of sound.
    constexpr double step = 1;
    do {
      made = std::max(made, std::min(made + step, target));
      if (auto failure = supervisor.reached(made)) return failure;
      if (auto failure = sound ? sound->writeUntil(made) : std::nullopt) return failure;
    } while (made < target);
    return std::nullopt;
  };
  std::int64_t end = 0;
  if (source.pictures) {
    PictureCuts pictures(*source.pictures, encoder);
    for (const auto& cut : cuts) {
      if (auto failure = pictures.write(cut, pace)) return failure;
    }
    end = pictures.end();
  }
  if (auto failure = sound && !cuts.empty() ? pace(cuts.back().targetEnd()) : std::nullopt) return failure;
  if (end == 0 && !(sound && sound->hasWritten())) return Error{"Nothing of the recording lies in that stretch"};
  return encoder.finish(end);
}

class ExportedMovie final : public NewMovie {
 public:
  explicit ExportedMovie(const std::string& target) : file_(target) {}

  /// Why the name could not be taken: an error number of the system, or 0.
  [[nodiscard]] int error() const { return file_.error(); }

  std::optional<Error> write(const std::string& source, std::span<const TimeRange> stretches,
                             const Supervision& supervision) override;

 private:
  ReservedFile file_;
};

std::optional<Error> ExportedMovie::write(const std::string& source, std::span<const TimeRange> stretches,
                                          const Supervision& supervision) {
  auto tracks = openSource(source);
  if (!tracks) return tracks.error();
  auto encoder = MovieEncoder::make(formatOf(tracks.value()));
  if (!encoder) return Error{"Could not prepare the recording export"};
  if (auto failure = encoder.value().open(file_.contentPath(), MovieFile::Form::IndexInFront)) return failure;
  const auto cuts = cutsOf(stretches);
  const Supervisor supervisor(supervision, cuts.empty() ? 0 : cuts.back().targetEnd());
  if (auto failure = writeTracks(tracks.value(), cuts, encoder.value(), supervisor)) return failure;
  if (auto failure = supervisor.done()) return failure;
  const int error = file_.commit();
  return error == 0 ? std::nullopt : std::optional(Error{wordsFor(error)});
}

}  // namespace

Result<std::unique_ptr<NewMovie>> NewMovie::take(const std::string& target) {
  auto movie = std::make_unique<ExportedMovie>(target);
  if (movie->error() != 0) return Error{wordsFor(movie->error())};
  return std::unique_ptr<NewMovie>(std::move(movie));
}

std::optional<Error> exportMovie(const std::string& source, std::span<const TimeRange> stretches,
                                 const std::string& target, const Supervision& supervision) {
  const auto movie = NewMovie::take(target);
  return movie ? movie.value()->write(source, stretches, supervision) : std::optional(movie.error());
}

}  // namespace Nimbrel::MediaFile
