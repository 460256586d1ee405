#include "Linux/Media/SoundForm.h"

namespace Nimbrel::Media {

AVChannelLayout layoutOf(const AVFrame& sound) {
  if (sound.ch_layout.order != AV_CHANNEL_ORDER_UNSPEC) return sound.ch_layout;
  AVChannelLayout usual{};
  av_channel_layout_default(&usual, sound.ch_layout.nb_channels);
  return usual;
}

bool haveSameForm(const AVFrame& a, const AVFrame& b) {
  return a.format == b.format && a.sample_rate == b.sample_rate &&
         av_channel_layout_compare(&a.ch_layout, &b.ch_layout) == 0;
}

int copyForm(const AVFrame& from, AVFrame& to) {
  av_frame_unref(&to);
  to.format = from.format;
  to.sample_rate = from.sample_rate;
  return av_channel_layout_copy(&to.ch_layout, &from.ch_layout);
}

}  // namespace Nimbrel::Media
