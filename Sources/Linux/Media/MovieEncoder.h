#pragma once

#include "Linux/Media/MovieFile.h"
#include "Linux/Media/PictureEncoder.h"
#include "Linux/Media/SoundEncoder.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace Nimbrel::Media {

/// What a movie consists of.
struct MovieFormat {
  struct Sound {
    int sampleRate = 0;  ///< a second
    int channels = 0;
  };
  using DisplayMatrix = std::array<std::int32_t, 9>;

  std::optional<PictureFormat> pictures;
  std::optional<Sound> sound;
  std::optional<DisplayMatrix> displayMatrix;  ///< how pictures are turned when shown
};

/// Encodes pictures and sound into a file. One thread at a time; after a failure it is of no more use.
class MovieEncoder {
 public:
  /// Makes the encoders, and no file yet. Fails when there are none.
  [[nodiscard]] static Result<MovieEncoder> make(const MovieFormat& format);

  /// Makes the file, or empties the one that is there. To be called once, before all others.
  [[nodiscard]] std::optional<Error> open(const std::string& path, MovieFile::Form form);

  /// A picture that is shown from then on, later than the one before it.
  [[nodiscard]] std::optional<Error> addPicture(const AVFrame& picture, std::int64_t ticks);

  /// Adds `count` samples of each channel from `offset` on, behind those that were added before.
  [[nodiscard]] std::optional<Error> addSound(const AVFrame& sound, int offset, int count);

  /// Shows the last picture until `end` and closes the file.
  [[nodiscard]] std::optional<Error> finish(std::int64_t end);

 private:
  [[nodiscard]] PacketSink into(const AVStream& track, const AVCodecContext& codec);

  std::optional<PictureEncoder> pictures_;
  std::optional<SoundEncoder> sound_;
  std::optional<MovieFormat::DisplayMatrix> displayMatrix_;
  std::optional<MovieFile> file_;
  AVStream* pictureTrack_ = nullptr;  ///< owned by the file
  AVStream* soundTrack_ = nullptr;    ///< owned by the file
};

}  // namespace Nimbrel::Media
