#include "Linux/Media/MediaInput.h"

#include "Linux/Media/AvError.h"
#include "Linux/Media/InputFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

namespace Nimbrel::Media {

namespace {

constexpr double highestFrameRate = 1000;

/// So many packets may be unreadable in a row before the rest of the file counts as lost.
constexpr int damageLimit = 1000;

AVMediaType mediaType(MediaInput::Kind kind) {
  return kind == MediaInput::Kind::Pictures ? AVMEDIA_TYPE_VIDEO : AVMEDIA_TYPE_AUDIO;
}

double seconds(std::int64_t time) { return time == AV_NOPTS_VALUE ? 0 : static_cast<double>(time) / AV_TIME_BASE; }

/// What stands before time zero only helps decoders to start.
double startOf(const AVFormatContext& format) { return std::max(0.0, seconds(format.start_time)); }

/// What encoders of sound put before it, where the decoder has not taken it away.
bool isSilentLead(const DecodedFrame& frame) {
  return frame.frame->nb_samples > 0 && frame.time + frame.length.value_or(0) <= 0;
}

/// Cuts off what the last packet of sound holds behind the end of its track, since encoders only fill whole ones.
void trimEnd(AVFrame& sound, const AVStream& track) {
  if (track.duration == AV_NOPTS_VALUE || sound.best_effort_timestamp == AV_NOPTS_VALUE) return;
  const auto start = track.start_time == AV_NOPTS_VALUE ? 0 : track.start_time;
  const auto left =
      av_rescale_q(start + track.duration - sound.best_effort_timestamp, track.time_base, {1, sound.sample_rate});
  if (left > 0 && left < sound.nb_samples) sound.nb_samples = static_cast<int>(left);
}

Result<Codec> openDecoder(const AVStream& stream) {
  const AVCodec* decoder = avcodec_find_decoder(stream.codecpar->codec_id);
  if (!decoder) return avError(AVERROR_DECODER_NOT_FOUND);
  Codec codec(avcodec_alloc_context3(decoder));
  if (!codec) return avError(AVERROR(ENOMEM));
  if (const int code = avcodec_parameters_to_context(codec.get(), stream.codecpar); code < 0) return avError(code);
  codec->pkt_timebase = stream.time_base;
  codec->thread_count = 0;  // as many as there are processors
  if (const int code = avcodec_open2(codec.get(), decoder, nullptr); code < 0) return avError(code);
  return codec;
}

}  // namespace

MediaInput::MediaInput(InputFormat format)
    : format_(std::move(format)), frame_(av_frame_alloc()), packet_(av_packet_alloc()) {}

Result<MediaInput> MediaInput::open(const std::string& path) {
  auto format = openInput(path);
  if (!format) return format.error();
  MediaInput input(std::move(format).value());
  if (!input.frame_ || !input.packet_) return avError(AVERROR(ENOMEM));
  return input;
}

double MediaInput::duration() const {
  return std::max(0.0, seconds(format_->duration) + std::min(0.0, seconds(format_->start_time)));
}

bool MediaInput::has(Kind kind) const { return first(kind) != nullptr; }

AVStream* MediaInput::first(Kind kind) const {
  const std::span streams(format_->streams, format_->nb_streams);
  const auto found = std::ranges::find_if(streams, [kind](const AVStream* stream) {
    return stream->codecpar->codec_type == mediaType(kind) && (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) == 0;
  });
  return found == streams.end() ? nullptr : *found;
}

std::optional<Error> MediaInput::choose(Kind kind) {
  stream_ = first(kind);
  if (!stream_) return Error{kind == Kind::Pictures ? "The recording has no pictures" : "The recording has no sound"};
  auto decoder = openDecoder(*stream_);
  if (!decoder) return decoder.error();
  decoder_ = std::move(decoder).value();
  for (AVStream* stream : std::span(format_->streams, format_->nb_streams)) {
    stream->discard = stream == stream_ ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
  }
  return std::nullopt;
}

const std::int32_t* MediaInput::displayMatrix() const {
  std::size_t size = 0;
  const auto* bytes = av_stream_get_side_data(stream_, AV_PKT_DATA_DISPLAYMATRIX, &size);
  return size < 9 * sizeof(std::int32_t) ? nullptr : reinterpret_cast<const std::int32_t*>(bytes);
}

AVRational MediaInput::frameRate() const {
  for (const auto& rate : {stream_->avg_frame_rate, stream_->r_frame_rate}) {
    if (rate.num > 0 && rate.den > 0 && av_q2d(rate) >= 1 && av_q2d(rate) <= highestFrameRate) return rate;
  }
  return {30, 1};
}

std::int64_t MediaInput::ticks(double time) const {
  constexpr double farthest = 1e15;
  const double wanted = (time + startOf(*format_)) / av_q2d(stream_->time_base);
  return std::llround(std::clamp(wanted, -farthest, farthest));
}

bool MediaInput::isNear(double time) const {
  if (const auto* start = avformat_index_get_entry_from_timestamp(stream_, ticks(time), AVSEEK_FLAG_BACKWARD)) {
    return start->timestamp <= ticks(lastTime_);
  }
  constexpr double usualDistance = 5;  // of the frames from which on one can decode
  return time - lastTime_ < usualDistance;
}

int MediaInput::jump(double time) {
  int code = av_seek_frame(format_.get(), stream_->index, ticks(time), AVSEEK_FLAG_BACKWARD);
  if (code < 0) {
    // Nothing so early, or no index: everything can be reached from the beginning.
    constexpr auto earliest = std::numeric_limits<std::int64_t>::min();
    const auto beginning = stream_->start_time == AV_NOPTS_VALUE ? 0 : stream_->start_time;
    code = avformat_seek_file(format_.get(), stream_->index, earliest, beginning, beginning, 0);
  }
  if (code < 0) code = av_seek_frame(format_.get(), stream_->index, 0, AVSEEK_FLAG_BYTE);
  avcodec_flush_buffers(decoder_.get());
  expectedTime_ = 0;
  return code;
}

std::optional<Error> MediaInput::seek(double time) {
  // Pictures that are decoded before those shown earlier may bring us behind the moment, though we asked for less.
  constexpr std::array earlier{0.0, 1.0, 10.0, std::numeric_limits<double>::infinity()};
  for (const double back : earlier) {
    ahead_.reset();
    if (const int code = jump(std::max(0.0, time - back)); code < 0) return avError(code);
    const auto frame = decodeNext();
    if (!frame) return frame.error();
    ahead_ = frame.value();
    if ((ahead_ && ahead_->time <= time) || time - back <= 0) break;
  }
  return std::nullopt;
}

Result<std::optional<DecodedFrame>> MediaInput::next() {
  if (ahead_) return std::exchange(ahead_, std::nullopt);
  return decodeNext();
}

Result<std::optional<DecodedFrame>> MediaInput::decodeNext() {
  for (int damages = 0; damages < damageLimit;) {
    const int code = avcodec_receive_frame(decoder_.get(), frame_.get());
    if (code == 0) {
      const auto frame = described();
      if (!isSilentLead(frame)) return std::optional(frame);
    } else if (code == AVERROR_EOF) {
      break;
    } else {
      const int fed = code == AVERROR(EAGAIN) ? feedDecoder() : AVERROR_INVALIDDATA;
      if (fed < 0 && fed != AVERROR_INVALIDDATA) return avError(fed);
      damages += fed < 0 ? 1 : 0;
    }
  }
  return std::optional<DecodedFrame>();
}

int MediaInput::feedDecoder() {
  int code = 0;
  do {
    av_packet_unref(packet_.get());
    code = av_read_frame(format_.get(), packet_.get());
  } while (code == 0 && packet_->stream_index != stream_->index);
  if (code == AVERROR_EOF) return avcodec_send_packet(decoder_.get(), nullptr);
  if (code < 0) return code;
  code = avcodec_send_packet(decoder_.get(), packet_.get());
  av_packet_unref(packet_.get());
  // Decoders have all kinds of numbers for what they cannot make sense of.
  return code < 0 && code != AVERROR(ENOMEM) ? AVERROR_INVALIDDATA : code;
}

DecodedFrame MediaInput::described() {
  const double tick = av_q2d(stream_->time_base);
  DecodedFrame result{.frame = frame_.get(), .time = expectedTime_};
  if (frame_->best_effort_timestamp != AV_NOPTS_VALUE) {
    result.time = static_cast<double>(frame_->best_effort_timestamp) * tick - startOf(*format_);
  }
  if (frame_->nb_samples > 0 && frame_->sample_rate > 0) {
    trimEnd(*frame_, *stream_);
    result.length = static_cast<double>(frame_->nb_samples) / frame_->sample_rate;
  } else if (frame_->pkt_duration > 0) {
    result.length = static_cast<double>(frame_->pkt_duration) * tick;
  }
  lastTime_ = result.time;
  expectedTime_ = result.time + result.length.value_or(0);
  return result;
}

}  // namespace Nimbrel::Media
