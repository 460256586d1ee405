#include "Platform/MediaFile.h"

#include "Linux/Media/MediaInput.h"
#include "Linux/Media/SampleConverter.h"

namespace Nimbrel::MediaFile {

using Media::MediaInput;

Result<double> duration(const std::string& path) {
  const auto input = MediaInput::open(path);
  if (!input) return input.error();
  return input.value().duration();
}

std::optional<Error> forEachSoundBuffer(const std::string& path, const SoundVisitor& visit,
                                        const std::stop_token& stop) {
  auto opened = MediaInput::open(path);
  if (!opened) return opened.error();
  auto& input = opened.value();
  if (input.choose(MediaInput::Kind::Sound)) return std::nullopt;
  Media::SampleConverter converter;
  while (true) {
    if (stop.stop_requested()) return Error{"The search for sound was stopped"};
    const auto sound = input.next();
    if (!sound) return sound.error();
    const auto& decoded = sound.value();
    if (!decoded) return std::nullopt;
    const auto samples = converter.samples(*decoded->frame);
    if (!samples) return samples.error();
    visit({.start = decoded->time, .length = decoded->length, .samples = samples.value()});
  }
}

}  // namespace Nimbrel::MediaFile
