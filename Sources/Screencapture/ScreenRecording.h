#pragma once

#include "Foundation/Result.h"
#include "Screencapture/CaptureRequest.h"

#include <QObject>
#include <QRect>

#include <functional>
#include <memory>
#include <optional>

namespace Nimbrel::Screencapture {

/// A recording of a part of an X11 screen, with sound where a source is, from its start until stop(). Shows the stop
/// control meanwhile, and a thin frame around an area that was selected. Main thread; frames are taken and encoded in a
/// thread of their own.
class ScreenRecording {
 public:
  /// Absent when the movie is whole at its path. Otherwise there may still be what was recorded before the failure.
  using Then = std::function<void(std::optional<Error> failure)>;

  virtual ~ScreenRecording() = default;

  /// Finishes the movie; `then` follows. Again, it does nothing.
  virtual void stop() = 0;
};

/// Begins to record `area`, in pixels of the root window, into a new file at the request's path; nothing that stands
/// there is replaced (see RecordedMovie for what is at the path meanwhile). The area may be cut by a column and a row,
/// since encoders want even sizes. `then` comes once, in a later turn of the event loop, after stop(), after a click on
/// the stop control, when the area is not on the screen any more, or when it fails; it may destroy the recording. Never
/// once `context` or the recording is gone, which ends it and leaves no file. If the program ends through exit(), the
/// movie is finished first.
[[nodiscard]] std::unique_ptr<ScreenRecording> recordScreen(QObject* context, const QRect& area,
                                                            const CaptureRequest& request, ScreenRecording::Then then);

}  // namespace Nimbrel::Screencapture
