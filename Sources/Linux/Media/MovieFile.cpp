#include "Linux/Media/MovieFile.h"

#include "Linux/Media/AvError.h"

#include <string>
#include <utility>

namespace Nimbrel::Media {

namespace {

constexpr auto longestFragment = "1000000";  // microseconds
constexpr auto fractionsOfSecond = "60000";

}  // namespace

Result<MovieFile> MovieFile::create(const std::string& path, Form form) {
  quietLibraries();
  const auto url = "file:" + path;
  AVFormatContext* made = nullptr;
  if (const int code = avformat_alloc_output_context2(&made, nullptr, "mov", url.c_str()); code < 0) {
    return avError(code);
  }
  OutputFormat format(made);
  if (form == Form::Fragments) format->flags |= AVFMT_FLAG_FLUSH_PACKETS;
  if (const int code = avio_open(&format->pb, url.c_str(), AVIO_FLAG_WRITE); code < 0) return avError(code);
  return MovieFile(std::move(format), form);
}

AVStream* MovieFile::addTrack(const AVCodecParameters& content, AVRational timeBase) {
  AVStream* track = avformat_new_stream(format_.get(), nullptr);
  if (!track || avcodec_parameters_copy(track->codecpar, &content) < 0) return nullptr;
  track->codecpar->codec_tag = 0;  // the file has its own names for what is in it
  track->time_base = timeBase;
  track->sample_aspect_ratio = content.sample_aspect_ratio;
  return track;
}

std::optional<Error> MovieFile::begin() {
  Options options;
  // The length of each track is given in these; the usual thousandth would cut sound and pictures off.
  options.set("movie_timescale", fractionsOfSecond);
  if (form_ == Form::Fragments) {
    // With its beginning delayed until there is something in each track, so that it can say when each one starts.
    options.set("movflags", "+frag_keyframe+empty_moov+delay_moov");
    options.set("frag_duration", longestFragment);
  } else {
    options.set("movflags", "+faststart");
  }
  const int code = avformat_write_header(format_.get(), options.get());
  return code < 0 ? std::optional(avError(code)) : std::nullopt;
}

std::optional<Error> MovieFile::write(AVPacket& packet, const AVStream& track, AVRational timeBase) {
  av_packet_rescale_ts(&packet, timeBase, track.time_base);
  packet.stream_index = track.index;
  packet.pos = -1;
  const int code = av_interleaved_write_frame(format_.get(), &packet);
  return code < 0 ? std::optional(avError(code)) : std::nullopt;
}

std::optional<Error> MovieFile::end() {
  int code = av_write_trailer(format_.get());
  avio_flush(format_->pb);
  if (code >= 0) code = format_->pb->error;
  const int closed = avio_closep(&format_->pb);
  if (code >= 0) code = closed;
  return code < 0 ? std::optional(avError(code)) : std::nullopt;
}

}  // namespace Nimbrel::Media
