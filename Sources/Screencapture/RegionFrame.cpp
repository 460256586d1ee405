#include "Screencapture/RegionFrame.h"

#include <xcb/xfixes.h>

#include <array>
#include <cstdint>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

constexpr std::uint32_t red = 0xFFFF3B30;

/// Around the area without a gap and without overlaps.
std::array<QRect, 4> sidesOf(const QRect& area, int thickness) {
  const auto outer = area.adjusted(-thickness, -thickness, thickness, thickness);
  return {QRect(outer.left(), outer.top(), outer.width(), thickness),
          QRect(outer.left(), area.bottom() + 1, outer.width(), thickness),
          QRect(outer.left(), area.top(), thickness, area.height()),
          QRect(area.right() + 1, area.top(), thickness, area.height())};
}

void say(const X11Display& display, xcb_window_t window, std::string_view property, std::uint32_t number) {
  xcb_change_property(display.get(), XCB_PROP_MODE_REPLACE, window, display.atom(property), XCB_ATOM_CARDINAL, 32, 1,
                      &number);
}

}  // namespace

RegionFrame::RegionFrame(const QRect& area, int thickness) {
  auto display = X11Display::open();
  if (!display) return;
  display_ = std::move(display).value();
  const auto* shaping = xcb_get_extension_data(display_->get(), &xcb_xfixes_id);
  // Windows that swallow clicks would be worse than none.
  if (shaping == nullptr || shaping->present == 0) return;
  xcb_discard_reply(display_->get(), xcb_xfixes_query_version(display_->get(), 4, 0).sequence);
  for (const auto& side : sidesOf(area, thickness)) {
    if (side.intersects(display_->bounds())) addSide(side);
  }
  display_->flush();
}

void RegionFrame::addSide(const QRect& side) {
  auto* server = display_->get();
  const auto window = xcb_generate_id(server);
  const std::array<std::uint32_t, 2> values{red, 1};
  xcb_create_window(server, XCB_COPY_FROM_PARENT, window, display_->root(), static_cast<std::int16_t>(side.x()),
                    static_cast<std::int16_t>(side.y()), static_cast<std::uint16_t>(side.width()),
                    static_cast<std::uint16_t>(side.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
  const auto nothing = xcb_generate_id(server);
  xcb_xfixes_create_region(server, nothing, 0, nullptr);
  constexpr xcb_shape_kind_t input = 2;
  xcb_xfixes_set_window_shape_region(server, window, input, 0, 0, nothing);
  xcb_xfixes_destroy_region(server, nothing);
  // A shadow would fall into the picture.
  say(*display_, window, "_COMPTON_SHADOW", 0);
  xcb_map_window(server, window);
}

}  // namespace Nimbrel::Screencapture
