#include "Linux/Media/SampleConverter.h"

#include "Linux/Media/AvError.h"
#include "Linux/Media/SoundForm.h"

namespace Nimbrel::Media {

Result<std::span<const std::int16_t>> SampleConverter::samples(const AVFrame& sound) {
  const auto count = static_cast<std::size_t>(sound.nb_samples) * static_cast<std::size_t>(sound.ch_layout.nb_channels);
  if (sound.format == AV_SAMPLE_FMT_S16) {
    return std::span(reinterpret_cast<const std::int16_t*>(sound.extended_data[0]), count);
  }
  if (!form_) return avError(AVERROR(ENOMEM));
  if (const int code = prepare(sound); code < 0) return avError(code);
  if (samples_.size() < count) samples_.resize(count);
  auto* plane = reinterpret_cast<std::uint8_t*>(samples_.data());
  const auto** planes = const_cast<const std::uint8_t**>(sound.extended_data);
  const int made = swr_convert(converter_.get(), &plane, sound.nb_samples, planes, sound.nb_samples);
  if (made < 0) return avError(made);
  return std::span<const std::int16_t>(samples_).first(count);
}

int SampleConverter::prepare(const AVFrame& sound) {
  if (converter_ && haveSameForm(sound, *form_)) return 0;
  if (const int code = copyForm(sound, *form_); code < 0) return code;
  auto layout = layoutOf(sound);
  SwrContext* made = nullptr;
  const int code = swr_alloc_set_opts2(&made, &layout, AV_SAMPLE_FMT_S16, sound.sample_rate, &layout,
                                       static_cast<AVSampleFormat>(sound.format), sound.sample_rate, 0, nullptr);
  converter_.reset(made);
  return code < 0 ? code : swr_init(converter_.get());
}

}  // namespace Nimbrel::Media
