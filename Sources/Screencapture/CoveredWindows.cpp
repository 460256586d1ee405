#include "Screencapture/CoveredWindows.h"

#include "Screencapture/PixelMemory.h"

#include <QTimer>

#include <xcb/composite.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

/// So long a program has to draw what it was told is missing; nothing tells when it has.
constexpr std::chrono::milliseconds timeToDraw(250);

bool canKeepApart(const X11Display& display) {
  const auto* extension = xcb_get_extension_data(display.get(), &xcb_composite_id);
  if (extension == nullptr || extension->present == 0) return false;
  const XcbOwned<xcb_composite_query_version_reply_t> version(
      xcb_composite_query_version_reply(display.get(), xcb_composite_query_version(display.get(), 0, 4), nullptr));
  return version && std::pair(version->major_version, version->minor_version) >= std::pair(0U, 2U);
}

/// A name for the pixels of a window, for as long as this lives.
class WindowPixmap {
 public:
  WindowPixmap(const X11Display& display, xcb_window_t window)
      : display_(display), id_(xcb_generate_id(display.get())) {
    const XcbOwned<xcb_generic_error_t> error(
        xcb_request_check(display.get(), xcb_composite_name_window_pixmap_checked(display.get(), window, id_)));
    if (error || !display.isUp()) id_ = XCB_NONE;
  }
  ~WindowPixmap() {
    if (id_ != XCB_NONE) xcb_free_pixmap(display_.get(), id_);
  }
  WindowPixmap(const WindowPixmap&) = delete;
  WindowPixmap& operator=(const WindowPixmap&) = delete;

  [[nodiscard]] xcb_pixmap_t id() const { return id_; }

 private:
  const X11Display& display_;
  xcb_pixmap_t id_;
};

XcbOwned<xcb_get_geometry_reply_t> geometryOf(const X11Display& display, xcb_drawable_t drawable) {
  return XcbOwned<xcb_get_geometry_reply_t>(
      xcb_get_geometry_reply(display.get(), xcb_get_geometry(display.get(), drawable), nullptr));
}

}  // namespace

CoveredWindows::CoveredWindows(const X11Display& display) : display_(display), isAble_(canKeepApart(display)) {}

void CoveredWindows::keep(const StackedWindow& window) {
  if (!isAble_ || kept_.contains(window.id)) return;
  // The server does so for nobody else's sake, and no longer than this connection lasts.
  xcb_composite_redirect_window(display_.get(), window.id, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
  display_.flush();
  kept_[window.id].start();
}

void CoveredWindows::read(const StackedWindow& window, Then then) {
  keep(window);
  const auto passed = isAble_ ? std::chrono::milliseconds(kept_[window.id].elapsed()) : timeToDraw;
  QTimer::singleShot(std::max(timeToDraw - passed, std::chrono::milliseconds(0)), &context_,
                     [this, window, then = std::move(then)] { then(pixelsOf(window)); });
}

std::optional<QImage> CoveredWindows::pixelsOf(const StackedWindow& window) const {
  if (!isAble_) return std::nullopt;
  const WindowPixmap pixmap(display_, window.id);
  if (pixmap.id() == XCB_NONE) return std::nullopt;
  const auto place = geometryOf(display_, window.id);
  const auto size = geometryOf(display_, pixmap.id());
  if (!place || !size) return std::nullopt;
  const auto area = window.area.translated(-place->x, -place->y) & QRect(0, 0, size->width, size->height);
  if (area.size() != window.area.size()) return std::nullopt;
  auto memory = PixelMemory::make(display_, area.size(), size->depth);
  if (!memory || memory.value()->read(pixmap.id(), area.topLeft())) return std::nullopt;
  return memory.value()->image().copy();
}

}  // namespace Nimbrel::Screencapture
