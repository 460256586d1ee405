#include "Linux/Media/SoundEncoder.h"

#include "Linux/Media/AvError.h"
#include "Linux/Media/SoundForm.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace Nimbrel::Media {

namespace {

constexpr int bitsPerChannel = 64'000;

/// The rate itself or the next higher one that the encoder knows; the highest when all are lower.
int supportedRate(const AVCodec& encoder, int wanted) {
  if (!encoder.supported_samplerates) return wanted;
  int best = 0;
  int highest = 0;
  for (const int* rate = encoder.supported_samplerates; *rate != 0; ++rate) {
    highest = std::max(highest, *rate);
    if (*rate >= wanted && (best == 0 || *rate < best)) best = *rate;
  }
  return best != 0 ? best : highest;
}

Codec opened(const AVCodec& encoder, int sampleRate, int channels) {
  Codec codec(avcodec_alloc_context3(&encoder));
  if (!codec) return nullptr;
  codec->sample_rate = sampleRate;
  codec->sample_fmt = AV_SAMPLE_FMT_FLTP;
  codec->time_base = {1, sampleRate};
  codec->bit_rate = std::int64_t{bitsPerChannel} * channels;
  codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  av_channel_layout_default(&codec->ch_layout, channels);
  return avcodec_open2(codec.get(), &encoder, nullptr) < 0 ? nullptr : std::move(codec);
}

/// Where the samples from an offset on begin, for each plane.
std::vector<const std::uint8_t*> planesFrom(const AVFrame& sound, int offset) {
  const auto format = static_cast<AVSampleFormat>(sound.format);
  const bool isPlanar = av_sample_fmt_is_planar(format) != 0;
  const int planes = isPlanar ? sound.ch_layout.nb_channels : 1;
  const int step = av_get_bytes_per_sample(format) * (isPlanar ? 1 : sound.ch_layout.nb_channels);
  std::vector<const std::uint8_t*> result;
  result.reserve(static_cast<std::size_t>(planes));
  for (int plane = 0; plane < planes; ++plane) {
    result.push_back(sound.extended_data[plane] + std::ptrdiff_t{step} * offset);
  }
  return result;
}

}  // namespace

SoundEncoder::SoundEncoder(Codec codec)
    : codec_(std::move(codec)),
      form_(av_frame_alloc()),
      converted_(av_frame_alloc()),
      waiting_(av_audio_fifo_alloc(codec_->sample_fmt, codec_->ch_layout.nb_channels, codec_->frame_size)) {}

Result<SoundEncoder> SoundEncoder::open(int sampleRate, int channels) {
  quietLibraries();
  const AVCodec* encoder = avcodec_find_encoder(AV_CODEC_ID_AAC);
  constexpr int stereo = 2;
  for (const int some : {channels, std::min(channels, stereo)}) {
    auto codec = encoder ? opened(*encoder, supportedRate(*encoder, sampleRate), some) : nullptr;
    if (!codec) continue;
    SoundEncoder result(std::move(codec));
    if (!result.form_ || !result.converted_ || !result.waiting_) return avError(AVERROR(ENOMEM));
    return result;
  }
  return Error{"Nothing here encodes such sound"};
}

std::optional<Error> SoundEncoder::add(const AVFrame& sound, int offset, int count, const PacketSink& sink) {
  int code = prepareConverter(sound);
  auto planes = planesFrom(sound, offset);
  if (code >= 0) code = convert(planes.data(), count);
  return code < 0 ? std::optional(avError(code)) : encodeWhole(sink);
}

int SoundEncoder::prepareConverter(const AVFrame& sound) {
  if (converter_ && haveSameForm(sound, *form_)) return 0;
  if (converter_) {
    // What the former one has kept back to reach over the edges of buffers.
    if (const int code = convert(nullptr, 0); code < 0) return code;
  }
  if (const int code = copyForm(sound, *form_); code < 0) return code;
  auto layout = layoutOf(sound);
  SwrContext* made = nullptr;
  const int code = swr_alloc_set_opts2(&made, &codec_->ch_layout, codec_->sample_fmt, codec_->sample_rate, &layout,
                                       static_cast<AVSampleFormat>(sound.format), sound.sample_rate, 0, nullptr);
  converter_.reset(made);
  return code < 0 ? code : swr_init(converter_.get());
}

int SoundEncoder::convert(const std::uint8_t** planes, int count) {
  const int room = swr_get_out_samples(converter_.get(), count);
  if (room <= 0) return room;
  if (const int code = reserveConverted(room); code < 0) return code;
  const int made = swr_convert(converter_.get(), converted_->extended_data, room, planes, count);
  if (made <= 0) return made;
  return av_audio_fifo_write(waiting_.get(), reinterpret_cast<void**>(converted_->extended_data), made);
}

int SoundEncoder::reserveConverted(int count) {
  if (converted_->nb_samples >= count) return 0;
  av_frame_unref(converted_.get());
  converted_->format = codec_->sample_fmt;
  converted_->nb_samples = count;
  if (const int code = av_channel_layout_copy(&converted_->ch_layout, &codec_->ch_layout); code < 0) return code;
  return av_frame_get_buffer(converted_.get(), 0);
}

std::optional<Error> SoundEncoder::encodeWhole(const PacketSink& sink) {
  while (av_audio_fifo_size(waiting_.get()) >= codec_->frame_size) {
    if (auto failure = encodeSome(codec_->frame_size, sink)) return failure;
  }
  return std::nullopt;
}

std::optional<Error> SoundEncoder::encodeSome(int count, const PacketSink& sink) {
  const Frame frame(av_frame_alloc());
  if (!frame) return avError(AVERROR(ENOMEM));
  frame->format = codec_->sample_fmt;
  frame->sample_rate = codec_->sample_rate;
  frame->nb_samples = count;
  frame->pts = encoded_;
  int code = av_channel_layout_copy(&frame->ch_layout, &codec_->ch_layout);
  if (code >= 0) code = av_frame_get_buffer(frame.get(), 0);
  if (code < 0) return avError(code);
  av_audio_fifo_read(waiting_.get(), reinterpret_cast<void**>(frame->extended_data), count);
  encoded_ += count;
  return encode(*codec_, frame.get(), sink);
}

std::optional<Error> SoundEncoder::finish(const PacketSink& sink) {
  if (converter_) {
    if (const int code = convert(nullptr, 0); code < 0) return avError(code);
  }
  if (auto failure = encodeWhole(sink)) return failure;
  if (const int rest = av_audio_fifo_size(waiting_.get()); rest > 0) {
    if (auto failure = encodeSome(rest, sink)) return failure;
  }
  return encode(*codec_, nullptr, sink);
}

}  // namespace Nimbrel::Media
