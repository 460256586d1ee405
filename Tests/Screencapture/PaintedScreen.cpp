#include "Screencapture/PaintedScreen.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace Nimbrel::Testing {

using Screencapture::X11Display;
using Screencapture::XcbOwned;

PaintedScreen::PaintedScreen(const QColor& colour) {
  auto display = X11Display::open();
  if (!display) {
    ADD_FAILURE() << display.error().message;
    return;
  }
  display_ = std::move(display).value();
  paint(colour);
}

void PaintedScreen::paint(const QColor& colour) {
  auto* server = display_->get();
  const std::uint32_t pixel = colour.rgb() & 0xFFFFFF;
  xcb_change_window_attributes(server, display_->root(), XCB_CW_BACK_PIXEL, &pixel);
  xcb_clear_area(server, 0, display_->root(), 0, 0, 0, 0);
  const XcbOwned<xcb_get_input_focus_reply_t> done(
      xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr));
}

}  // namespace Nimbrel::Testing
