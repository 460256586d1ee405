#pragma once

#include "Foundation/Result.h"

#include <QObject>
#include <QRect>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Nimbrel::Screencapture {

/// A recording of a part of an X11 screen, with sound where a source is, from its start until stop(). Shows the stop
/// control meanwhile. Main thread; frames are taken and encoded in a thread of its own.
class ScreenRecording {
 public:
  /// Absent when the movie is whole at its path.
  using Then = std::function<void(std::optional<Error> failure)>;

  virtual ~ScreenRecording() = default;

  /// Finishes the movie; `then` follows. Again, it does nothing.
  virtual void stop() = 0;
};

/// Begins to record `area`, in pixels of the root window, into a new file at `path`; nothing that stands there is
/// replaced. The area may be cut by a column and a row, since encoders want even sizes. `then` comes once, in a later
/// turn of the event loop, after stop(), after a click on the stop control, or when it fails; never once `context` or
/// the recording is gone, which ends it and leaves no file.
[[nodiscard]] std::unique_ptr<ScreenRecording> recordScreen(QObject* context, const QRect& area,
                                                            const std::string& path, ScreenRecording::Then then);

}  // namespace Nimbrel::Screencapture
