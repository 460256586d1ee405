#include "Screencapture/PixelMemory.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <algorithm>
#include <cstring>

namespace Nimbrel::Screencapture {

namespace {

/// So many bytes at once go through the connection.
constexpr qsizetype stripBytes = 1 << 22;

bool isShared(const X11Display& display) {
  const auto* extension = xcb_get_extension_data(display.get(), &xcb_shm_id);
  return extension != nullptr && extension->present != 0;
}

/// As the server has them: rows begin at whole 32 bits, which is what QImage does.
qsizetype bytesPerLine(int width, QImage::Format format) {
  const qsizetype bits = QImage::toPixelFormat(format).bitsPerPixel();
  return (width * bits + 31) / 32 * 4;
}

std::uint16_t lineCount(int lines) { return static_cast<std::uint16_t>(lines); }

}  // namespace

Result<std::unique_ptr<PixelMemory>> PixelMemory::make(const X11Display& display, QSize size, std::uint8_t depth) {
  const auto format = display.pixelFormat(depth);
  if (!format) return Error{"The colours of this display are not known"};
  std::unique_ptr<PixelMemory> memory(new PixelMemory(display, size, depth, *format));
  if (memory->image_.isNull()) return Error{"There is not enough memory for the picture"};
  return memory;
}

PixelMemory::PixelMemory(const X11Display& display, QSize size, std::uint8_t depth, QImage::Format format)
    : display_(display), depth_(depth) {
  if (!share(size, format)) image_ = QImage(size, format);
}

PixelMemory::~PixelMemory() {
  if (segment_ != 0) xcb_shm_detach(display_.get(), segment_);
  if (memory_ != nullptr) ::shmdt(memory_);
}

bool PixelMemory::share(QSize size, QImage::Format format) {
  if (!isShared(display_) || size.isEmpty()) return false;
  const auto line = bytesPerLine(size.width(), format);
  const int id = ::shmget(IPC_PRIVATE, static_cast<std::size_t>(line * size.height()), IPC_CREAT | 0600);
  if (id < 0) return false;
  void* memory = ::shmat(id, nullptr, 0);
  const auto failed = reinterpret_cast<void*>(-1);
  if (memory != failed) {
    const auto segment = xcb_generate_id(display_.get());
    const XcbOwned<xcb_generic_error_t> error(xcb_request_check(
        display_.get(), xcb_shm_attach_checked(display_.get(), segment, static_cast<std::uint32_t>(id), 0)));
    if (!error) {
      segment_ = segment;
      memory_ = memory;
      image_ = QImage(static_cast<uchar*>(memory), size.width(), size.height(), line, format);
    } else {
      ::shmdt(memory);
    }
  }
  // It stays until both have let go of it, however they end.
  ::shmctl(id, IPC_RMID, nullptr);
  return segment_ != 0;
}

std::optional<Error> PixelMemory::read(xcb_drawable_t from, QPoint origin) {
  bool isRead = false;
  if (segment_ != 0) {
    const auto cookie = xcb_shm_get_image(display_.get(), from, static_cast<std::int16_t>(origin.x()),
                                          static_cast<std::int16_t>(origin.y()), lineCount(image_.width()),
                                          lineCount(image_.height()), ~0U, XCB_IMAGE_FORMAT_Z_PIXMAP, segment_, 0);
    isRead = XcbOwned<xcb_shm_get_image_reply_t>(xcb_shm_get_image_reply(display_.get(), cookie, nullptr)) != nullptr;
  } else {
    isRead = readStrips(from, origin);
  }
  if (isRead) return std::nullopt;
  return display_.isUp() ? Error{"The screen cannot be read"} : X11Display::lossOfServer();
}

bool PixelMemory::readStrips(xcb_drawable_t from, QPoint origin) {
  const int lines = static_cast<int>(std::max<qsizetype>(1, stripBytes / image_.bytesPerLine()));
  for (int y = 0; y < image_.height(); y += lines) {
    const int count = std::min(lines, image_.height() - y);
    const auto cookie =
        xcb_get_image(display_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, from, static_cast<std::int16_t>(origin.x()),
                      static_cast<std::int16_t>(origin.y() + y), lineCount(image_.width()), lineCount(count), ~0U);
    const XcbOwned<xcb_get_image_reply_t> reply(xcb_get_image_reply(display_.get(), cookie, nullptr));
    const auto expected = image_.bytesPerLine() * count;
    if (!reply || xcb_get_image_data_length(reply.get()) < expected) return false;
    std::memcpy(image_.scanLine(y), xcb_get_image_data(reply.get()), static_cast<std::size_t>(expected));
  }
  return true;
}

void PixelMemory::draw(xcb_drawable_t target, xcb_gcontext_t context, const QRect& part) {
  if (segment_ == 0) return send(target, context, part);
  xcb_shm_put_image(display_.get(), target, context, lineCount(image_.width()), lineCount(image_.height()),
                    static_cast<std::uint16_t>(part.x()), static_cast<std::uint16_t>(part.y()), lineCount(part.width()),
                    lineCount(part.height()), static_cast<std::int16_t>(part.x()), static_cast<std::int16_t>(part.y()),
                    depth_, XCB_IMAGE_FORMAT_Z_PIXMAP, 0, segment_, 0);
}

void PixelMemory::send(xcb_drawable_t target, xcb_gcontext_t context, const QRect& part) const {
  const auto longest = qsizetype{xcb_get_maximum_request_length(display_.get())} * 4 - 64;
  const auto piece = image_.copy(part);
  const int lines = static_cast<int>(std::clamp<qsizetype>(longest / piece.bytesPerLine(), 1, piece.height()));
  for (int y = 0; y < piece.height(); y += lines) {
    const int count = std::min(lines, piece.height() - y);
    xcb_put_image(display_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, target, context, lineCount(piece.width()),
                  lineCount(count), static_cast<std::int16_t>(part.x()), static_cast<std::int16_t>(part.y() + y), 0,
                  depth_, static_cast<std::uint32_t>(piece.bytesPerLine() * count), piece.constScanLine(y));
  }
}

Result<std::unique_ptr<PixelMemory>> screenPixels(const X11Display& display, const QRect& area) {
  auto memory = PixelMemory::make(display, area.size(), display.screen().root_depth);
  if (!memory) return memory;
  if (auto error = memory.value()->read(display.root(), area.topLeft())) return *std::move(error);
  return memory;
}

}  // namespace Nimbrel::Screencapture
