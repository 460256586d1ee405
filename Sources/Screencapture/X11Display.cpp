#include "Screencapture/X11Display.h"

#include <bit>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

constexpr std::uint32_t longestProperty = 1 << 20;

const xcb_screen_t* screenOf(const xcb_setup_t* setup, int number) {
  auto screens = xcb_setup_roots_iterator(setup);
  for (; number > 0 && screens.rem > 1; --number) xcb_screen_next(&screens);
  return screens.rem > 0 ? screens.data : nullptr;
}

const xcb_visualtype_t* visualOf(const xcb_screen_t& screen, xcb_visualid_t id) {
  for (auto depths = xcb_screen_allowed_depths_iterator(&screen); depths.rem > 0; xcb_depth_next(&depths)) {
    for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0; xcb_visualtype_next(&visuals)) {
      if (visuals.data->visual_id == id) return visuals.data;
    }
  }
  return nullptr;
}

int bitsPerPixel(const xcb_setup_t* setup, std::uint8_t depth) {
  for (auto formats = xcb_setup_pixmap_formats_iterator(setup); formats.rem > 0; xcb_format_next(&formats)) {
    if (formats.data->depth == depth) return formats.data->bits_per_pixel;
  }
  return 0;
}

}  // namespace

Result<std::unique_ptr<X11Display>> X11Display::open() {
  int number = 0;
  Connection connection(xcb_connect(nullptr, &number));
  if (xcb_connection_has_error(connection.get()) != 0) return Error{"There is no display to take a picture of"};
  const auto* screen = screenOf(xcb_get_setup(connection.get()), number);
  if (screen == nullptr) return Error{"The display has no screen"};
  return std::unique_ptr<X11Display>(new X11Display(std::move(connection), screen));
}

QRect X11Display::bounds() const { return {0, 0, screen_->width_in_pixels, screen_->height_in_pixels}; }

std::optional<QImage::Format> X11Display::pixelFormat(std::uint8_t depth) const {
  const auto* setup = xcb_get_setup(get());
  const bool isOurOrder =
      (setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST) == (std::endian::native == std::endian::little);
  if (!isOurOrder) return std::nullopt;
  const int bits = bitsPerPixel(setup, depth);
  if (depth == 32 && bits == 32) return QImage::Format_ARGB32_Premultiplied;
  const auto* visual = visualOf(*screen_, screen_->root_visual);
  if (visual == nullptr || depth != screen_->root_depth) return std::nullopt;
  if (bits == 32 && visual->red_mask == 0xff0000 && visual->blue_mask == 0xff) return QImage::Format_RGB32;
  if (bits == 32 && visual->red_mask == 0x3ff00000) return QImage::Format_RGB30;
  if (bits == 32 && visual->blue_mask == 0x3ff00000) return QImage::Format_BGR30;
  if (bits == 16 && visual->red_mask == 0xf800 && visual->green_mask == 0x7e0) return QImage::Format_RGB16;
  return std::nullopt;
}

xcb_atom_t X11Display::atom(std::string_view name) const {
  if (const auto known = atoms_.find(name); known != atoms_.end()) return known->second;
  const XcbOwned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
      get(), xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
  if (!reply) return 0;
  return atoms_.emplace(name, reply->atom).first->second;
}

XcbOwned<xcb_get_property_reply_t> X11Display::property(xcb_window_t window, std::string_view name) const {
  const auto cookie = xcb_get_property(get(), 0, window, atom(name), XCB_ATOM_ANY, 0, longestProperty);
  return XcbOwned<xcb_get_property_reply_t>(xcb_get_property_reply(get(), cookie, nullptr));
}

std::vector<std::uint32_t> X11Display::numbers(xcb_window_t window, std::string_view name) const {
  const auto reply = property(window, name);
  if (!reply || reply->format != 32) return {};
  const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {values, values + reply->value_len};
}

std::string X11Display::text(xcb_window_t window, std::string_view name) const {
  const auto reply = property(window, name);
  if (!reply || reply->format != 8) return {};
  const auto* characters = static_cast<const char*>(xcb_get_property_value(reply.get()));
  return {characters, reply->value_len};
}

}  // namespace Nimbrel::Screencapture
