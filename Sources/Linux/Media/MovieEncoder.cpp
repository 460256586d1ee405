#include "Linux/Media/MovieEncoder.h"

#include "Linux/Media/AvError.h"

#include <cstring>
#include <utility>

namespace Nimbrel::Media {

namespace {

/// Null without memory.
AVStream* trackOf(MovieFile& file, const AVCodecContext& codec) {
  const std::unique_ptr<AVCodecParameters, Releasing<avcodec_parameters_free>> content(avcodec_parameters_alloc());
  if (!content || avcodec_parameters_from_context(content.get(), &codec) < 0) return nullptr;
  return file.addTrack(*content, codec.time_base);
}

bool setDisplayMatrix(AVStream& track, const MovieFormat::DisplayMatrix& matrix) {
  auto* bytes = av_stream_new_side_data(&track, AV_PKT_DATA_DISPLAYMATRIX, sizeof matrix);
  if (!bytes) return false;
  std::memcpy(bytes, matrix.data(), sizeof matrix);
  return true;
}

/// What was asked for is not part of the format, or the file was not made.
std::optional<Error> notOpen() { return avError(AVERROR(EINVAL)); }

}  // namespace

Result<MovieEncoder> MovieEncoder::make(const MovieFormat& format) {
  MovieEncoder result;
  result.displayMatrix_ = format.displayMatrix;
  if (format.pictures) {
    auto encoder = PictureEncoder::open(*format.pictures);
    if (!encoder) return encoder.error();
    result.pictures_ = std::move(encoder).value();
  }
  if (format.sound) {
    auto encoder = SoundEncoder::open(format.sound->sampleRate, format.sound->channels);
    if (!encoder) return encoder.error();
    result.sound_ = std::move(encoder).value();
  }
  return result;
}

std::optional<Error> MovieEncoder::open(const std::string& path, MovieFile::Form form) {
  auto file = MovieFile::create(path, form);
  if (!file) return file.error();
  file_ = std::move(file).value();
  if (pictures_) {
    pictureTrack_ = trackOf(*file_, pictures_->codec());
    if (!pictureTrack_) return avError(AVERROR(ENOMEM));
    pictureTrack_->avg_frame_rate = pictures_->codec().framerate;
    if (displayMatrix_ && !setDisplayMatrix(*pictureTrack_, *displayMatrix_)) return avError(AVERROR(ENOMEM));
  }
  if (sound_) {
    soundTrack_ = trackOf(*file_, sound_->codec());
    if (!soundTrack_) return avError(AVERROR(ENOMEM));
  }
  return file_->begin();
}

PacketSink MovieEncoder::into(const AVStream& track, const AVCodecContext& codec) {
  return [this, &track, timeBase = codec.time_base](AVPacket& packet) {
    return file_ ? file_->write(packet, track, timeBase) : notOpen();
  };
}

std::optional<Error> MovieEncoder::addPicture(const AVFrame& picture, std::int64_t ticks) {
  if (!pictures_) return notOpen();
  return pictures_->add(picture, ticks, into(*pictureTrack_, pictures_->codec()));
}

std::optional<Error> MovieEncoder::addSound(const AVFrame& sound, int offset, int count) {
  if (!sound_) return notOpen();
  return sound_->add(sound, offset, count, into(*soundTrack_, sound_->codec()));
}

std::optional<Error> MovieEncoder::finish(std::int64_t end) {
  if (pictures_) {
    if (auto failure = pictures_->finish(end, into(*pictureTrack_, pictures_->codec()))) return failure;
  }
  if (sound_) {
    if (auto failure = sound_->finish(into(*soundTrack_, sound_->codec()))) return failure;
  }
  return file_ ? file_->end() : notOpen();
}

}  // namespace Nimbrel::Media
