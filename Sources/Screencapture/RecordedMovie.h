#pragma once

#include "Foundation/Result.h"
#include "Platform/MovieWriter.h"
#include "Screencapture/SoundSource.h"

#include <QImage>
#include <QSize>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace Nimbrel::Screencapture {

/// The movie of a recording: its file, its frames and the sound beside them, wherever the frames come from. One thread
/// at a time.
///
/// It is written under its own name from the beginning, in fragments that can be played, since that loses nothing:
/// whatever ends the program or fills the disk, what was recorded until then is where it was asked for, and whoever
/// waits for the file finds it. A name that is taken is refused at the beginning. Only a recording that is given up, or
/// that failed before there was anything to play, leaves no file.
class RecordedMovie {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// `kind` is what was recorded, for the file's metadata: "selection", "window" or "display". Without a source the
  /// movie has no sound. The size is even.
  [[nodiscard]] static Result<std::unique_ptr<RecordedMovie>> begin(const std::string& path, const QSize& size,
                                                                    std::string kind,
                                                                    std::unique_ptr<SoundSource> sound);

  /// Gives the recording up, unless it is finished.
  ~RecordedMovie();
  RecordedMovie(const RecordedMovie&) = delete;
  RecordedMovie& operator=(const RecordedMovie&) = delete;

  /// What is seen from `time` on, which is in the order of time. The movie begins with the first one. Pixels that the
  /// frame does not own stay as they are until the next one.
  [[nodiscard]] std::optional<Error> addFrame(const QImage& frame, Time time);

  /// Nothing has changed up to `time`; to be called as often as frames would come.
  [[nodiscard]] std::optional<Error> goOn(Time time);

  /// Ends the movie. After an error what was recorded before it is still there, in fragments, if it can be played.
  /// Fails without a single frame. To be called once, and no other operation after it.
  [[nodiscard]] std::optional<Error> finish(Time end);

 private:
  RecordedMovie(std::string path, std::string kind, std::unique_ptr<MovieWriter> writer,
                std::unique_ptr<SoundSource> sound);

  [[nodiscard]] double seconds(Time time) const;
  [[nodiscard]] std::optional<Error> addSound();

  std::string path_;
  std::string kind_;
  std::unique_ptr<MovieWriter> writer_;
  std::unique_ptr<SoundSource> sound_;
  bool hasBegun_ = false;
  Time begun_;
  QImage last_;
  Time lastAdded_;
  bool isKept_ = false;
};

}  // namespace Nimbrel::Screencapture
