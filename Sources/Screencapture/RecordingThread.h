#pragma once

#include "Foundation/Result.h"

#include <QRect>

#include <atomic>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>

namespace Nimbrel::Screencapture {

/// Takes frames of an X11 screen and writes the movie of them, in a thread of its own, from its beginning until stop(),
/// or until the screen is not there any more, which is an end like any other. A frame is taken 30 times a second, or as
/// often as it can be encoded; the time of each is that when it was taken.
class RecordingThread {
 public:
  struct Plan {
    QRect area;  ///< pixels of the root window; of even size
    std::string path;
    std::string kind;  ///< "selection" or "display"
  };
  /// Called in the thread.
  struct Events {
    std::function<void()> began;                              ///< the first frame is taken
    std::function<void(std::optional<Error> failure)> ended;  ///< the last thing that it does; not when it is given up
  };

  RecordingThread(Plan plan, Events events);

  /// Gives the recording up, unless it has ended.
  ~RecordingThread();
  RecordingThread(const RecordingThread&) = delete;
  RecordingThread& operator=(const RecordingThread&) = delete;

  /// Has the movie finished; returns at once.
  void stop() { thread_.request_stop(); }

  /// Has it finished, waits for that, and says how it ended. To be called once.
  [[nodiscard]] std::optional<Error> finish();

 private:
  void run(const std::stop_token& stop);
  [[nodiscard]] std::optional<Error> record(const std::stop_token& stop);

  Plan plan_;
  Events events_;
  std::atomic<bool> isGivenUp_ = false;
  std::optional<Error> failure_;  ///< of the thread until it is joined
  std::jthread thread_;
};

}  // namespace Nimbrel::Screencapture
