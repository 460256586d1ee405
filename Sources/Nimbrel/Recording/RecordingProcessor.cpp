#include "Recording/RecordingProcessor.h"

#include "Recording/AudibleRanges.h"
#include "Recording/KeptStretches.h"
#include "Recording/NewName.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <utility>

namespace Nimbrel::RecordingProcessor {

double Composition::duration() const {
  return std::accumulate(stretches.begin(), stretches.end(), 0.0,
                         [](double sum, const TimeRange& stretch) { return sum + stretch.length(); });
}

Result<double> duration(const std::string& url) {
  const auto length = MediaFile::duration(url);
  if (!length) return length.error();
  return std::max(length.value(), shortestLength);
}

Result<std::vector<TimeRange>> audibleRanges(const std::string& url, const std::stop_token& stop) {
  AudibleRanges ranges;
  const auto failure = MediaFile::forEachSoundBuffer(
      url, [&](const MediaFile::SoundBuffer& buffer) { ranges.add(buffer); }, stop);
  if (failure) return *failure;
  return ranges.padded();
}

Result<Composition> composition(const std::string& url, double start, double end, bool removeSilence,
                                const std::stop_token& stop) {
  const auto length = MediaFile::duration(url);
  if (!length) return length.error();
  const auto window = windowOf(start, end, length.value());
  if (!removeSilence) return Composition{.source = url, .stretches = {window}};
  const auto audible = audibleRanges(url, stop);
  if (!audible) return audible.error();
  return Composition{.source = url, .stretches = keptOf(window, audible.value())};
}

std::optional<Error> exportMovie(const Composition& composition, const std::string& target,
                                 const Supervision& supervision) {
  return MediaFile::exportMovie(composition.source, composition.stretches, target, supervision);
}

Result<std::string> trimmedCopy(const std::string& url, double start, double end, bool removeSilence,
                                const Supervision& supervision) {
  Result<std::unique_ptr<MediaFile::NewMovie>> movie(nullptr);
  const auto path = takeNewName(url, ".trimmed.mov", [&](const std::string& name) {
    movie = MediaFile::NewMovie::take(name);
    return movie.hasValue();
  });
  if (!path) return movie.error();
  const auto kept = composition(url, start, end, removeSilence, supervision.stop);
  if (!kept) return kept.error();
  if (auto failure = movie.value()->write(url, kept.value().stretches, supervision)) return *failure;
  return *path;
}

}  // namespace Nimbrel::RecordingProcessor
