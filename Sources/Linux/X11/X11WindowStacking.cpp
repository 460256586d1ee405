#include "Linux/X11/X11WindowStacking.h"

#include "Linux/X11/WindowConnection.h"

#include <QWindow>

#include <array>
#include <cstdint>
#include <utility>

namespace Nimbrel {

namespace {

class X11WindowStacking final : public WindowStacking {
 public:
  explicit X11WindowStacking(std::shared_ptr<XcbConnection> connection) : connection_(std::move(connection)) {}

  [[nodiscard]] bool canPlace() const override { return true; }
  [[nodiscard]] bool isComposited() const override;
  void keepAbove(QWindow& window) override;

 private:
  std::shared_ptr<XcbConnection> connection_;
};

bool X11WindowStacking::isComposited() const {
  if (!connection_->isUp()) return false;
  auto* server = connection_->get();
  // Whoever puts the windows of the first screen together owns this (freedesktop.org, "Compositing Managers").
  const auto cookie = xcb_get_selection_owner(server, connection_->atom("_NET_WM_CM_S0"));
  const XcbOwned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(server, cookie, nullptr));
  return reply && reply->owner != XCB_WINDOW_NONE;
}

void X11WindowStacking::keepAbove(QWindow& window) {
  auto* server = connectionOfWindows();
  if (server == nullptr || !connection_->isUp()) return;
  const auto id = static_cast<xcb_window_t>(window.winId());
  constexpr std::uint32_t allWorkspaces = 0xFFFFFFFF;
  xcb_change_property(server, XCB_PROP_MODE_REPLACE, id, connection_->atom("_NET_WM_DESKTOP"), XCB_ATOM_CARDINAL, 32, 1,
                      &allWorkspaces);
  const std::array states{connection_->atom("_NET_WM_STATE_ABOVE"), connection_->atom("_NET_WM_STATE_STICKY"),
                          connection_->atom("_NET_WM_STATE_SKIP_TASKBAR"),
                          connection_->atom("_NET_WM_STATE_SKIP_PAGER")};
  // Qt adds its own when it shows the window.
  xcb_change_property(server, XCB_PROP_MODE_REPLACE, id, connection_->atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32,
                      static_cast<std::uint32_t>(states.size()), states.data());
}

}  // namespace

std::unique_ptr<WindowStacking> makeX11WindowStacking(std::shared_ptr<XcbConnection> connection) {
  return std::make_unique<X11WindowStacking>(std::move(connection));
}

}  // namespace Nimbrel
