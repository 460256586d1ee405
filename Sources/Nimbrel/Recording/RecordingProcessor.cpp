#include "Recording/RecordingProcessor.h"

#include "Foundation/FilePath.h"
#include "Model/ShotFile.h"
#include "Recording/AudibleRanges.h"
#include "Recording/KeptStretches.h"

#include <algorithm>
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

std::string trimmedURL(const std::string& url) {
  const auto name = std::string(FilePath::baseName(url)) + ".trimmed.mov";
  return ShotFile::uniqueURL(FilePath::join(FilePath::folder(url), name));
}

std::optional<Error> exportMovie(const Composition& composition, const std::string& target,
                                 const Supervision& supervision) {
  return MediaFile::exportMovie(composition.source, composition.stretches, target, supervision);
}

}  // namespace Nimbrel::RecordingProcessor
