#pragma once

#include "Screencapture/PipeWireDaemon.h"

#include <QImage>
#include <QRect>

#include <cstdint>
#include <memory>

#include <spa/param/video/raw.h>

namespace Nimbrel::Testing {

/// A screen in PipeWire, as a desktop would offer it: a node that shows a picture a hundred times a second to whoever
/// asks for pictures there. It does the work of a session manager as well, and links them to itself.
class ScreenDouble {
 public:
  /// Waits until the node is there. The format is one of four bytes a pixel.
  static std::unique_ptr<ScreenDouble> open(const PipeWireDaemon& daemon, const QImage& picture,
                                            spa_video_format format = SPA_VIDEO_FORMAT_BGRx);

  virtual ~ScreenDouble() = default;

  [[nodiscard]] virtual std::uint32_t node() const = 0;

  /// Shows another picture from now on, after a new negotiation when its size differs.
  virtual void show(const QImage& picture) = 0;

  /// From now on says that only this part counts.
  virtual void crop(const QRect& part) = 0;

  /// How many pictures were shown so far.
  [[nodiscard]] virtual int shown() const = 0;
};

}  // namespace Nimbrel::Testing
