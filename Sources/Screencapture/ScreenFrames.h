#pragma once

#include "Foundation/Result.h"

#include <QImage>
#include <QRect>

#include <memory>
#include <optional>

namespace Nimbrel::Screencapture {

/// Pictures of a part of an X11 screen, one after the other, over a connection of their own. Unlike a screenshot they
/// show the pointer (as XFixes tells), which whoever watches a recording follows. Any thread, one at a time.
class ScreenFrames {
 public:
  /// `area` is in pixels of the root window. Fails without a display, where pixels are not 8 bits of red, green and
  /// blue in 32, and when the area is not on the screen.
  [[nodiscard]] static Result<std::unique_ptr<ScreenFrames>> open(const QRect& area);

  virtual ~ScreenFrames() = default;

  /// What is on the screen now; nothing when that is what the last picture shows already. The picture stays as it is
  /// until the next one, and no longer. Fails once the area is not on the screen any more, or the screen is gone.
  [[nodiscard]] virtual Result<std::optional<QImage>> next() = 0;
};

}  // namespace Nimbrel::Screencapture
