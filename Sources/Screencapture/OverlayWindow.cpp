#include "Screencapture/OverlayWindow.h"

#include <array>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

/// Another window may want to be above all as well, and one has to give in.
constexpr int mostReturns = 20;

}  // namespace

Result<std::unique_ptr<OverlayWindow>> OverlayWindow::show(const X11Display& display, const QImage& frozen,
                                                           const OverlayScene& scene) {
  auto canvas = PixelMemory::make(display, frozen.size(), display.screen().root_depth);
  if (!canvas) return canvas.error();
  std::unique_ptr<OverlayWindow> overlay(new OverlayWindow(display, frozen, std::move(canvas).value()));
  overlay->scene_ = scene;
  paintOverlay(overlay->canvas_->image(), frozen, scene, frozen.rect());
  overlay->create();
  return overlay;
}

OverlayWindow::OverlayWindow(const X11Display& display, const QImage& frozen, std::unique_ptr<PixelMemory> canvas)
    : display_(display), frozen_(frozen), canvas_(std::move(canvas)) {}

OverlayWindow::~OverlayWindow() {
  xcb_free_gc(display_.get(), context_);
  xcb_destroy_window(display_.get(), window_);
  // Whoever comes next finds the screen without it.
  const auto cookie = xcb_get_input_focus(display_.get());
  const XcbOwned<xcb_get_input_focus_reply_t> answer(xcb_get_input_focus_reply(display_.get(), cookie, nullptr));
}

void OverlayWindow::create() {
  auto* connection = display_.get();
  window_ = xcb_generate_id(connection);
  // No background, which would flash; no window manager.
  const std::array<std::uint32_t, 3> values{XCB_BACK_PIXMAP_NONE, 1,
                                            XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_VISIBILITY_CHANGE};
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window_, display_.root(), 0, 0,
                    static_cast<std::uint16_t>(frozen_.width()), static_cast<std::uint16_t>(frozen_.height()), 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
  context_ = xcb_generate_id(connection);
  const std::uint32_t noExposures = 0;
  xcb_create_gc(connection, context_, window_, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
  describe();
  xcb_map_window(connection, window_);
  comeToTheTop();
  draw(frozen_.rect());
}

void OverlayWindow::describe() const {
  describe("WM_NAME", "Select a part of the screen", "STRING");
  describe("_NET_WM_NAME", "Select a part of the screen", "UTF8_STRING");
  describe("WM_WINDOW_ROLE", "selection-overlay", "STRING");
  describe("WM_CLASS", std::string_view("nimbrel-screencapture\0Nimbrel-screencapture\0", 44), "STRING");
}

void OverlayWindow::describe(std::string_view property, std::string_view text, std::string_view type) const {
  xcb_change_property(display_.get(), XCB_PROP_MODE_REPLACE, window_, display_.atom(property), display_.atom(type), 8,
                      static_cast<std::uint32_t>(text.size()), text.data());
}

void OverlayWindow::change(const OverlayScene& scene) {
  const auto changes = changesBetween(scene_, scene) & frozen_.rect();
  scene_ = scene;
  if (changes.isEmpty()) return;
  paintOverlay(canvas_->image(), frozen_, scene_, changes);
  draw(changes);
}

void OverlayWindow::handle(const xcb_generic_event_t& event) {
  const auto type = event.response_type & 0x7f;
  if (type == XCB_EXPOSE) {
    const auto& expose = reinterpret_cast<const xcb_expose_event_t&>(event);
    draw(QRect(expose.x, expose.y, expose.width, expose.height) & frozen_.rect());
  } else if (type == XCB_VISIBILITY_NOTIFY) {
    const auto& visibility = reinterpret_cast<const xcb_visibility_notify_event_t&>(event);
    if (visibility.state != XCB_VISIBILITY_UNOBSCURED && returns_++ < mostReturns) comeToTheTop();
  }
}

void OverlayWindow::draw(const QRegion& parts) {
  for (const auto& part : parts) canvas_->draw(window_, context_, part);
  display_.flush();
}

void OverlayWindow::comeToTheTop() {
  const std::uint32_t above = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(display_.get(), window_, XCB_CONFIG_WINDOW_STACK_MODE, &above);
  display_.flush();
}

}  // namespace Nimbrel::Screencapture
