#include "Linux/Media/Remux.h"

#include "Linux/Media/AvError.h"
#include "Linux/Media/InputFile.h"
#include "Linux/Media/MovieFile.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace Nimbrel::Media {

namespace {

/// Copies the packets of one track. Fragments do not say how long each packet is shown: until the next one comes, and
/// the last one until the end of its track. So each waits for the next.
class TrackCopy {
 public:
  TrackCopy(const AVStream& from, MovieFile& file) : from_(from), file_(file), last_(av_packet_alloc()) {}

  /// To be called once, before all others.
  [[nodiscard]] std::optional<Error> begin() {
    to_ = file_.addTrack(*from_.codecpar, from_.time_base);
    return to_ && last_ ? std::nullopt : std::optional(avError(AVERROR(ENOMEM)));
  }

  [[nodiscard]] std::optional<Error> add(AVPacket& packet) {
    if (start_ == AV_NOPTS_VALUE) start_ = packet.dts;
    if (auto failure = writeLast(packet.dts)) return failure;
    av_packet_move_ref(last_.get(), &packet);
    return std::nullopt;
  }

  [[nodiscard]] std::optional<Error> end() {
    const bool isKnown = from_.duration != AV_NOPTS_VALUE && start_ != AV_NOPTS_VALUE;
    return writeLast(isKnown ? start_ + from_.duration : last_->dts + last_->duration);
  }

 private:
  [[nodiscard]] std::optional<Error> writeLast(std::int64_t next) {
    if (!last_->data) return std::nullopt;
    last_->duration = std::max<std::int64_t>(1, next - last_->dts);
    auto failure = file_.write(*last_, *to_, from_.time_base);
    av_packet_unref(last_.get());
    return failure;
  }

  const AVStream& from_;
  MovieFile& file_;
  AVStream* to_ = nullptr;  ///< owned by the file
  Packet last_;
  std::int64_t start_ = AV_NOPTS_VALUE;
};

std::optional<Error> copyPackets(AVFormatContext& from, std::vector<TrackCopy>& tracks) {
  const Packet packet(av_packet_alloc());
  if (!packet) return avError(AVERROR(ENOMEM));
  int code = 0;
  while ((code = av_read_frame(&from, packet.get())) == 0) {
    const auto index = static_cast<std::size_t>(packet->stream_index);
    if (auto failure = tracks.at(index).add(*packet)) return failure;
  }
  if (code != AVERROR_EOF) return avError(code);
  for (auto& track : tracks) {
    if (auto failure = track.end()) return failure;
  }
  return std::nullopt;
}

}  // namespace

std::optional<Error> remux(const std::string& from, const std::string& to) {
  const auto input = openInput(from);
  if (!input) return input.error();
  AVFormatContext& source = *input.value();
  auto output = MovieFile::create(to, MovieFile::Form::IndexInFront);
  if (!output) return output.error();
  std::vector<TrackCopy> tracks;
  for (const AVStream* stream : std::span(source.streams, source.nb_streams)) {
    tracks.emplace_back(*stream, output.value());
    if (auto failure = tracks.back().begin()) return failure;
  }
  if (auto failure = output.value().begin()) return failure;
  if (auto failure = copyPackets(source, tracks)) return failure;
  return output.value().end();
}

}  // namespace Nimbrel::Media
