#include "Linux/X11/X11WindowFocus.h"

#include "Linux/X11/WindowConnection.h"
#include "Linux/X11/WindowFacts.h"

#include <unistd.h>

#include <array>
#include <utility>

namespace Nimbrel {

namespace {

class X11WindowFocus final : public WindowFocus {
 public:
  explicit X11WindowFocus(std::shared_ptr<XcbConnection> connection) : connection_(std::move(connection)) {}

  [[nodiscard]] std::optional<FocusedWindow> current() const override;
  void giveTo(std::uint64_t id) override;

 private:
  [[nodiscard]] QRect placeOf(xcb_window_t window) const;

  std::shared_ptr<XcbConnection> connection_;
};

std::optional<FocusedWindow> X11WindowFocus::current() const {
  if (!connection_->isUp()) return std::nullopt;
  const auto window = activeWindow(*connection_);
  if (!window) return std::nullopt;
  const auto facts = factsOf(*connection_, *window);
  const FocusedWindow focused{.id = *window, .isOurs = facts.process == ::getpid(), .place = placeOf(*window)};
  connection_->flush();
  return focused;
}

/// Nothing where the window is gone.
QRect X11WindowFocus::placeOf(xcb_window_t window) const {
  auto* server = connection_->get();
  const auto sizeCookie = xcb_get_geometry(server, window);
  // Within its own frame it may stand anywhere.
  const auto placeCookie = xcb_translate_coordinates(server, window, connection_->root(), 0, 0);
  const XcbOwned<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(server, sizeCookie, nullptr));
  const XcbOwned<xcb_translate_coordinates_reply_t> place(
      xcb_translate_coordinates_reply(server, placeCookie, nullptr));
  return size && place ? QRect(place->dst_x, place->dst_y, size->width, size->height) : QRect();
}

/// Until the server has heard what was said of them, as that they are hidden or shown.
void waitForOwnWindows() {
  auto* server = connectionOfWindows();
  if (server == nullptr) return;
  const auto cookie = xcb_get_input_focus(server);
  const XcbOwned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(server, cookie, nullptr));
}

void X11WindowFocus::giveTo(std::uint64_t id) {
  if (!connection_->isUp()) return;
  waitForOwnWindows();
  // What programs ask for themselves is refused where the user has not touched them of late. This is what a task bar
  // says, for the user.
  constexpr std::uint32_t fromPager = 2;
  constexpr std::array<std::uint32_t, 3> words{fromPager, XCB_CURRENT_TIME, XCB_WINDOW_NONE};
  tellWindowManager(*connection_->get(), connection_->root(), static_cast<xcb_window_t>(id),
                    connection_->atom("_NET_ACTIVE_WINDOW"), words);
  connection_->flush();
}

}  // namespace

std::unique_ptr<WindowFocus> makeX11WindowFocus(std::shared_ptr<XcbConnection> connection) {
  return std::make_unique<X11WindowFocus>(std::move(connection));
}

}  // namespace Nimbrel
