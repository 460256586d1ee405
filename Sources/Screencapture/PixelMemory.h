#pragma once

#include "Foundation/Result.h"
#include "Screencapture/X11Display.h"

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <xcb/shm.h>

#include <memory>
#include <optional>

namespace Nimbrel::Screencapture {

/// A picture in memory that the X server reaches by itself where it runs on this machine; elsewhere the pixels go
/// through the connection. The display must outlive it. Main thread.
class PixelMemory {
 public:
  /// Pixels as windows and pixmaps of that depth have them.
  [[nodiscard]] static Result<std::unique_ptr<PixelMemory>> make(const X11Display& display, QSize size,
                                                                 std::uint8_t depth);
  ~PixelMemory();
  PixelMemory(const PixelMemory&) = delete;
  PixelMemory& operator=(const PixelMemory&) = delete;

  [[nodiscard]] QImage& image() { return image_; }

  /// Fills all of it with what a window shows or a pixmap holds from that point on. The pointer is not in it.
  [[nodiscard]] std::optional<Error> read(xcb_drawable_t from, QPoint origin);

  /// Asks for a part of it to be drawn at the same place of a window or pixmap of the same depth; it may change again
  /// before that is done, and then the later pixels are drawn.
  void draw(xcb_drawable_t target, xcb_gcontext_t context, const QRect& part);

 private:
  PixelMemory(const X11Display& display, QSize size, std::uint8_t depth, QImage::Format format);

  [[nodiscard]] bool share(QSize size, QImage::Format format);
  [[nodiscard]] bool readStrips(xcb_drawable_t from, QPoint origin);
  void send(xcb_drawable_t target, xcb_gcontext_t context, const QRect& part) const;

  const X11Display& display_;
  std::uint8_t depth_;
  xcb_shm_seg_t segment_ = 0;  ///< 0 when the memory is ours alone
  void* memory_ = nullptr;
  QImage image_;
};

/// What the screen shows there now, without the pointer; the area lies within it.
[[nodiscard]] Result<std::unique_ptr<PixelMemory>> screenPixels(const X11Display& display, const QRect& area);

}  // namespace Nimbrel::Screencapture
