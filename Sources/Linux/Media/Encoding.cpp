#include "Linux/Media/Encoding.h"

#include "Linux/Media/AvError.h"

namespace Nimbrel::Media {

std::optional<Error> encode(AVCodecContext& codec, const AVFrame* frame, const PacketSink& sink) {
  const Packet packet(av_packet_alloc());
  if (!packet) return avError(AVERROR(ENOMEM));
  int code = avcodec_send_frame(&codec, frame);
  if (code < 0) return avError(code);
  while ((code = avcodec_receive_packet(&codec, packet.get())) == 0) {
    if (auto failure = sink(*packet)) return failure;
    av_packet_unref(packet.get());
  }
  return code == AVERROR(EAGAIN) || code == AVERROR_EOF ? std::nullopt : std::optional(avError(code));
}

}  // namespace Nimbrel::Media
