#pragma once

#include "Linux/Media/Encoding.h"
#include "Linux/Media/PictureFitter.h"

#include <cstdint>
#include <span>

namespace Nimbrel::Media {

/// Times of pictures are whole numbers of these, in seconds: fine enough for any rate of frames, and what every encoder
/// of the table can count in.
inline constexpr AVRational pictureTick{1, 60000};

/// The moment of a time in seconds.
[[nodiscard]] std::int64_t pictureTicks(double time);

/// What is encoded.
struct PictureFormat {
  int width = 0;                      ///< even
  int height = 0;                     ///< even
  AVRational framesPerSecond{30, 1};  ///< what is to be expected; pictures may come at any times
  AVRational pixelAspect{0, 1};       ///< width by height of a pixel; 0 when unknown
  Colours colours;
  bool isLive = false;  ///< whether packets are wanted soon, at the cost of larger ones
};

/// An encoder of FFmpeg's libraries, and how it is asked for pictures in which text stays sharp.
struct EncoderChoice {
  const char* name;
  const char* preset;  ///< null for an encoder that knows none
  const char* crf;     ///< the quality that is kept throughout; null for an encoder that knows none
  int quantiser;       ///< the same for those; 0 for the others
};

/// The encoders that we want, the best one first.
[[nodiscard]] std::span<const EncoderChoice> encoderChoices();

/// Encodes pictures in the order in which they are shown. How long each is shown follows from the next one's time.
class PictureEncoder {
 public:
  /// Takes the first of the choices that is installed and can be had for the format.
  [[nodiscard]] static Result<PictureEncoder> open(const PictureFormat& format,
                                                   std::span<const EncoderChoice> choices = encoderChoices());

  [[nodiscard]] const AVCodecContext& codec() const { return *codec_; }

  /// A picture that is shown from a moment later than that of the last one.
  [[nodiscard]] std::optional<Error> add(const AVFrame& picture, std::int64_t ticks, const PacketSink& sink);

  /// Hands on what was kept back; the last picture is shown until `end`.
  [[nodiscard]] std::optional<Error> finish(std::int64_t end, const PacketSink& sink);

 private:
  PictureEncoder(Codec codec, PictureFitter fitter);
  [[nodiscard]] std::optional<Error> passOnLast(std::int64_t end, const PacketSink& sink);
  [[nodiscard]] PacketSink keepingLast(const PacketSink& sink);

  Codec codec_;
  PictureFitter fitter_;
  Packet last_;  ///< waits for the time of the next one
};

}  // namespace Nimbrel::Media
