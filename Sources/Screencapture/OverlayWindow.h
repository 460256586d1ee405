#pragma once

#include "Screencapture/OverlayPicture.h"
#include "Screencapture/PixelMemory.h"
#include "Screencapture/X11Display.h"

#include <QImage>

#include <memory>

namespace Nimbrel::Screencapture {

/// A window above all others, over the whole screen, that shows scenes on a frozen picture of it. Gone with this
/// object. Display and picture must outlive it. Main thread.
class OverlayWindow {
 public:
  [[nodiscard]] static Result<std::unique_ptr<OverlayWindow>> show(const X11Display& display, const QImage& frozen,
                                                                   const OverlayScene& scene);
  ~OverlayWindow();
  OverlayWindow(const OverlayWindow&) = delete;
  OverlayWindow& operator=(const OverlayWindow&) = delete;

  /// Draws what differs from the scene before.
  void change(const OverlayScene& scene);

  /// Draws again what was lost, and comes to the top again when another window has come there.
  void handle(const xcb_generic_event_t& event);

 private:
  OverlayWindow(const X11Display& display, const QImage& frozen, std::unique_ptr<PixelMemory> canvas);

  void create();
  void describe() const;
  void describe(std::string_view property, std::string_view text, std::string_view type) const;
  void draw(const QRegion& parts);
  void comeToTheTop();

  const X11Display& display_;
  const QImage& frozen_;
  std::unique_ptr<PixelMemory> canvas_;
  OverlayScene scene_;
  xcb_window_t window_ = 0;
  xcb_gcontext_t context_ = 0;
  int returns_ = 0;
};

}  // namespace Nimbrel::Screencapture
