#pragma once

#include "Foundation/Result.h"

#include <QImage>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

/// Recordings on disk, as far as their tracks go; what is cut out of them is decided elsewhere. Any thread. Times are
/// seconds since the beginning of the file. Errors are in words for people.
namespace Nimbrel::MediaFile {

/// A stretch of time, its end excluded.
struct TimeRange {
  double start = 0;
  double end = 0;

  [[nodiscard]] double length() const { return end - start; }
  bool operator==(const TimeRange&) const = default;
};

/// How long the whole file plays; 0 when it does not say.
[[nodiscard]] Result<double> duration(const std::string& path);

/// A run of decoded sound: signed 16-bit samples in the track's own rate, channels interleaved, valid during the call.
struct SoundBuffer {
  double start = 0;
  std::optional<double> length;  ///< absent when the file does not tell
  std::span<const std::int16_t> samples;
};
using SoundVisitor = std::function<void(const SoundBuffer& buffer)>;

/// Decodes the first track of sound from its beginning to its end, and nothing else of the file. Without such a track,
/// and where nothing decodes it, there is no call. Damage in the middle is passed over. The error is that of a file
/// that cannot be opened or read, or that it was to stop.
[[nodiscard]] std::optional<Error> forEachSoundBuffer(const std::string& path, const SoundVisitor& visit,
                                                      const std::stop_token& stop = {});

/// Watches over long work.
struct Supervision {
  std::stop_token stop;                        ///< once asked to, the work ends with an error
  std::function<void(double share)> progress;  ///< 0 to 1; called on the thread of the work; may be empty
};

/// A movie that is to be made of a recording. Its name is taken from the start by an empty file; what is not written
/// whole is removed with it. One thread at a time.
class NewMovie {
 public:
  /// Takes the name, where nothing stands.
  [[nodiscard]] static Result<std::unique_ptr<NewMovie>> take(const std::string& target);
  virtual ~NewMovie() = default;

  /// Writes the movie as exportMovie() does. To be called once.
  [[nodiscard]] virtual std::optional<Error> write(const std::string& source, std::span<const TimeRange> stretches,
                                                   const Supervision& supervision) = 0;
};

/// Writes the stretches of the first video and the first sound track, one behind the other, in the file's orientation,
/// as a QuickTime movie with its index in front. Cuts are exact to the frame and the sample, and sound stays in step
/// over all of them; a stretch begins with the picture that is visible then. An odd column or row at the right or
/// bottom is left out. A stretch beyond the end of a track adds nothing of that track, and what is damaged is passed
/// over.
///
/// The file appears at `target` whole or not at all: the name is taken from the start by an empty file, nothing that
/// stands there is replaced, and what is unfinished is removed. Where nothing encodes such a movie the error is "Could
/// not prepare the recording export"; it is one as well when nothing lies in the stretches.
[[nodiscard]] std::optional<Error> exportMovie(const std::string& source, std::span<const TimeRange> stretches,
                                               const std::string& target, const Supervision& supervision);

/// Gives the pictures of a file's first video track, upright.
class FrameGrabber {
 public:
  /// Fails when the file cannot be read or has no pictures.
  [[nodiscard]] static Result<std::unique_ptr<FrameGrabber>> open(const std::string& path);
  virtual ~FrameGrabber() = default;

  /// The picture that is shown at that moment, exactly; before the first one the first, behind the last one the last.
  /// Asking in the order of time decodes each picture once. Holds one picture at a time.
  [[nodiscard]] virtual Result<QImage> frameAt(double time) = 0;
};

}  // namespace Nimbrel::MediaFile
