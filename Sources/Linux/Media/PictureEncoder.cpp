#include "Linux/Media/PictureEncoder.h"

#include "Linux/Media/AvError.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

namespace Nimbrel::Media {

namespace {

constexpr std::array knownChoices{
    EncoderChoice{.name = "libx264", .preset = "veryfast", .crf = "18", .quantiser = 0},
    EncoderChoice{.name = "mpeg4", .preset = nullptr, .crf = nullptr, .quantiser = 3},
};

void describe(AVCodecContext& codec, const PictureFormat& format) {
  codec.width = format.width;
  codec.height = format.height;
  codec.pix_fmt = AV_PIX_FMT_YUV420P;
  codec.time_base = pictureTick;
  codec.framerate = format.framesPerSecond;
  codec.sample_aspect_ratio = format.pixelAspect;
  codec.color_range = format.colours.range;
  codec.color_primaries = format.colours.primaries;
  codec.color_trc = format.colours.transfer;
  codec.colorspace = format.colours.space;
}

void choose(AVCodecContext& codec, const EncoderChoice& choice, const PictureFormat& format, Options& options) {
  codec.flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  codec.thread_count = 0;  // as many as suit the processors
  // Packets then come in the order of showing, and the last one ends the movie.
  codec.max_b_frames = 0;
  if (choice.preset) options.set("preset", choice.preset);
  if (choice.crf) options.set("crf", choice.crf);
  if (choice.quantiser > 0) {
    codec.flags |= AV_CODEC_FLAG_QSCALE;
    codec.global_quality = choice.quantiser * FF_QP2LAMBDA;
  }
  if (format.isLive) {
    constexpr int secondsBetweenKeyFrames = 4;
    codec.gop_size = std::max(1, static_cast<int>(secondsBetweenKeyFrames * av_q2d(format.framesPerSecond)));
    options.set("rc-lookahead", "0");
  }
}

Codec opened(const EncoderChoice& choice, const PictureFormat& format) {
  const AVCodec* encoder = avcodec_find_encoder_by_name(choice.name);
  if (!encoder) return nullptr;
  Codec codec(avcodec_alloc_context3(encoder));
  if (!codec) return nullptr;
  Options options;
  describe(*codec, format);
  choose(*codec, choice, format, options);
  return avcodec_open2(codec.get(), encoder, options.get()) < 0 ? nullptr : std::move(codec);
}

}  // namespace

std::int64_t pictureTicks(double time) { return std::llround(time * pictureTick.den / pictureTick.num); }

std::span<const EncoderChoice> encoderChoices() { return knownChoices; }

PictureEncoder::PictureEncoder(Codec codec, PictureFitter fitter)
    : codec_(std::move(codec)), fitter_(std::move(fitter)), last_(av_packet_alloc()) {}

Result<PictureEncoder> PictureEncoder::open(const PictureFormat& format, std::span<const EncoderChoice> choices) {
  quietLibraries();
  for (const auto& choice : choices) {
    auto codec = opened(choice, format);
    if (!codec) continue;
    PictureEncoder encoder(std::move(codec), PictureFitter(format.width, format.height, format.colours));
    if (!encoder.last_) return avError(AVERROR(ENOMEM));
    return encoder;
  }
  return Error{"Nothing here encodes such pictures"};
}

std::optional<Error> PictureEncoder::add(const AVFrame& picture, std::int64_t ticks, const PacketSink& sink) {
  const auto fitted = fitter_.fitted(picture);
  if (!fitted) return fitted.error();
  fitted.value()->pts = ticks;
  return encode(*codec_, fitted.value(), keepingLast(sink));
}

std::optional<Error> PictureEncoder::finish(std::int64_t end, const PacketSink& sink) {
  if (auto failure = encode(*codec_, nullptr, keepingLast(sink))) return failure;
  return passOnLast(end, sink);
}

PacketSink PictureEncoder::keepingLast(const PacketSink& sink) {
  return [this, &sink](AVPacket& packet) -> std::optional<Error> {
    if (auto failure = passOnLast(packet.pts, sink)) return failure;
    av_packet_move_ref(last_.get(), &packet);
    return std::nullopt;
  };
}

std::optional<Error> PictureEncoder::passOnLast(std::int64_t end, const PacketSink& sink) {
  if (!last_->data) return std::nullopt;
  last_->duration = std::max<std::int64_t>(1, end - last_->pts);
  auto failure = sink(*last_);
  av_packet_unref(last_.get());
  return failure;
}

}  // namespace Nimbrel::Media
