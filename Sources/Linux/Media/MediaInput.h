#pragma once

#include "Foundation/Result.h"
#include "Linux/Media/AvHandles.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Nimbrel::Media {

/// A frame of a track, and when it is shown or heard.
struct DecodedFrame {
  const AVFrame* frame = nullptr;  ///< borrowed from the input until it is asked for the next one
  double time = 0;                 ///< seconds since the beginning of the file
  std::optional<double> length;    ///< seconds; absent when the file does not tell
};

/// A file on disk, of which one track is decoded. Files that would have others opened, be it over the network, are
/// refused. Any thread, one at a time; a picture decoder has threads of its own.
class MediaInput {
 public:
  enum class Kind { Pictures, Sound };

  /// Fails when the file cannot be read or is no movie.
  [[nodiscard]] static Result<MediaInput> open(const std::string& path);

  /// How long the whole file plays, in seconds; 0 when it does not say.
  [[nodiscard]] double duration() const;

  /// Whether there is a track of that kind. The picture of an album cover is none.
  [[nodiscard]] bool has(Kind kind) const;

  /// Decodes the first track of that kind from here on and leaves all others on the disk. To be called once, before the
  /// operations below. Fails when there is none or nothing decodes it.
  [[nodiscard]] std::optional<Error> choose(Kind kind);

  /// The chosen track and its decoder.
  [[nodiscard]] const AVStream& track() const { return *stream_; }
  [[nodiscard]] const AVCodecContext& decoder() const { return *decoder_; }

  /// The nine numbers by which pictures are turned when shown, as libavutil/display.h has them; null without any.
  [[nodiscard]] const std::int32_t* displayMatrix() const;

  /// Pictures a second on average; 30 when the file does not say or says nonsense.
  [[nodiscard]] AVRational frameRate() const;

  /// Whether next() comes to the frame that is shown at `time`, not sooner than the one given last, without decoding
  /// more than after a seek().
  [[nodiscard]] bool isNear(double time) const;

  /// Goes on at the last frame from which on one can decode that is not later than `time`; at the first frame of all
  /// when each is later. Fails when the file cannot be read there.
  [[nodiscard]] std::optional<Error> seek(double time);

  /// The next frame in the order of time; absent at the end. What is damaged is passed over. Fails when the disk does.
  [[nodiscard]] Result<std::optional<DecodedFrame>> next();

 private:
  explicit MediaInput(InputFormat format);
  [[nodiscard]] AVStream* first(Kind kind) const;
  [[nodiscard]] std::int64_t ticks(double time) const;
  [[nodiscard]] int jump(double time);
  [[nodiscard]] Result<std::optional<DecodedFrame>> decodeNext();
  [[nodiscard]] int feedDecoder();
  [[nodiscard]] DecodedFrame described();

  InputFormat format_;
  AVStream* stream_ = nullptr;  ///< owned by the format
  Codec decoder_;
  Frame frame_;
  Packet packet_;
  std::optional<DecodedFrame> ahead_;  ///< what seek() has decoded already
  double lastTime_ = 0;                ///< of the frame decoded last
  double expectedTime_ = 0;            ///< of a frame without a time
};

}  // namespace Nimbrel::Media
