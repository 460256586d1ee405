#pragma once

#include "Linux/Media/Encoding.h"

extern "C" {
#include <libavutil/audio_fifo.h>
}

#include <cstdint>

namespace Nimbrel::Media {

/// Encodes sound as AAC. Its samples follow each other without a gap from time zero on.
class SoundEncoder {
 public:
  /// Takes the next rate and, of more than two, the next number of channels that the encoder knows.
  [[nodiscard]] static Result<SoundEncoder> open(int sampleRate, int channels);

  [[nodiscard]] const AVCodecContext& codec() const { return *codec_; }

  /// Adds `count` samples of each channel from `offset` on, of sound in any form.
  [[nodiscard]] std::optional<Error> add(const AVFrame& sound, int offset, int count, const PacketSink& sink);

  /// Hands on what was kept back.
  [[nodiscard]] std::optional<Error> finish(const PacketSink& sink);

 private:
  explicit SoundEncoder(Codec codec);
  [[nodiscard]] int prepareConverter(const AVFrame& sound);
  [[nodiscard]] int convert(const std::uint8_t** planes, int count);
  [[nodiscard]] int reserveConverted(int count);
  [[nodiscard]] std::optional<Error> encodeWhole(const PacketSink& sink);
  [[nodiscard]] std::optional<Error> encodeSome(int count, const PacketSink& sink);

  Codec codec_;
  Resampler converter_;
  Frame form_;       ///< says what the converter takes; holds no sound
  Frame converted_;  ///< what comes out of it
  std::unique_ptr<AVAudioFifo, Freeing<av_audio_fifo_free>> waiting_;  ///< until there is a packet full
  std::int64_t encoded_ = 0;                                           ///< samples of each channel
};

}  // namespace Nimbrel::Media
