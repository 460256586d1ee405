#include "Screencapture/ScreenFrames.h"

#include "Screencapture/PixelMemory.h"
#include "Screencapture/X11Display.h"

#include <QPainter>

#include <xcb/xfixes.h>

#include <cstring>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

using Pixels = std::unique_ptr<PixelMemory>;

/// The extension answers only those that told which version they know.
bool canAskForPointer(xcb_connection_t* server) {
  const auto* extension = xcb_get_extension_data(server, &xcb_xfixes_id);
  if (extension == nullptr || extension->present == 0) return false;
  const auto cookie = xcb_xfixes_query_version(server, 4, 0);
  return XcbOwned<xcb_xfixes_query_version_reply_t>(xcb_xfixes_query_version_reply(server, cookie, nullptr)) != nullptr;
}

bool isSame(const QImage& one, const QImage& other) {
  return std::memcmp(one.constBits(), other.constBits(), static_cast<std::size_t>(one.sizeInBytes())) == 0;
}

/// Other than a copy it leaves the image alone with its pixels; it would move away from shared ones to be painted on.
QImage viewOf(const QImage& image) {
  return {image.constBits(), image.width(), image.height(), image.bytesPerLine(), QImage::Format_RGB32};
}

class RootFrames final : public ScreenFrames {
 public:
  RootFrames(std::unique_ptr<X11Display> display, QPoint origin, Pixels front, Pixels back)
      : display_(std::move(display)),
        origin_(origin),
        hasPointer_(canAskForPointer(display_->get())),
        front_(std::move(front)),
        back_(std::move(back)) {}

  [[nodiscard]] Result<std::optional<QImage>> next() override;

 private:
  using Pointer = XcbOwned<xcb_xfixes_get_cursor_image_reply_t>;
  [[nodiscard]] Pointer pointer() const;
  void draw(const xcb_xfixes_get_cursor_image_reply_t& pointer);

  std::unique_ptr<X11Display> display_;  ///< outlives the pixels
  QPoint origin_;
  bool hasPointer_;
  bool hasFront_ = false;
  Pixels front_;  ///< the last picture that was given out
  Pixels back_;
};

Result<std::optional<QImage>> RootFrames::next() {
  if (auto failure = back_->read(display_->root(), origin_)) return *failure;
  if (const auto shape = pointer()) draw(*shape);
  if (hasFront_ && isSame(back_->image(), front_->image())) return std::optional<QImage>();
  std::swap(back_, front_);
  hasFront_ = true;
  return std::optional(viewOf(front_->image()));
}

RootFrames::Pointer RootFrames::pointer() const {
  if (!hasPointer_) return nullptr;
  return Pointer(
      xcb_xfixes_get_cursor_image_reply(display_->get(), xcb_xfixes_get_cursor_image(display_->get()), nullptr));
}

void RootFrames::draw(const xcb_xfixes_get_cursor_image_reply_t& pointer) {
  const auto* pixels = reinterpret_cast<const uchar*>(xcb_xfixes_get_cursor_image_cursor_image(&pointer));
  const QImage shape(pixels, pointer.width, pointer.height, QImage::Format_ARGB32_Premultiplied);
  QPainter(&back_->image()).drawImage(QPoint(pointer.x - pointer.xhot, pointer.y - pointer.yhot) - origin_, shape);
}

bool hasPlainPixels(const X11Display& display) {
  const auto format = display.pixelFormat(display.screen().root_depth);
  return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32_Premultiplied;
}

}  // namespace

Result<std::unique_ptr<ScreenFrames>> ScreenFrames::open(const QRect& area) {
  auto display = X11Display::open();
  if (!display) return display.error();
  const auto& screen = *display.value();
  if (!hasPlainPixels(screen)) return Error{"Only screens with 8 bits a colour can be recorded"};
  if (area.isEmpty()) return Error{"The area to record is too small for a movie"};
  if (!screen.bounds().contains(area)) return Error{"The area to record is not on the screen"};
  auto front = PixelMemory::make(screen, area.size(), screen.screen().root_depth);
  if (!front) return front.error();
  auto back = PixelMemory::make(screen, area.size(), screen.screen().root_depth);
  if (!back) return back.error();
  return std::unique_ptr<ScreenFrames>(std::make_unique<RootFrames>(std::move(display).value(), area.topLeft(),
                                                                    std::move(front).value(), std::move(back).value()));
}

}  // namespace Nimbrel::Screencapture
