#include "Linux/X11/X11WindowStacking.h"

#include "Linux/X11/WindowConnection.h"

#include <QEvent>
#include <QWindow>

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

namespace Nimbrel {

namespace {

constexpr std::uint32_t allWorkspaces = 0xFFFFFFFF;

/// Does something once, as soon as a window is on the screen.
class OnceExposed final : public QObject {
 public:
  OnceExposed(QWindow& window, std::function<void()> then) : QObject(&window), window_(window), then_(std::move(then)) {
    window.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* /*object*/, QEvent* event) override {
    if (event->type() == QEvent::Expose && window_.isExposed()) {
      window_.removeEventFilter(this);
      deleteLater();
      then_();
    }
    return false;
  }

 private:
  QWindow& window_;
  std::function<void()> then_;
};

/// Of a window that is on the screen.
void askToKeepAbove(XcbConnection& connection, xcb_window_t window) {
  auto* server = connectionOfWindows();
  if (server == nullptr || !connection.isUp()) return;
  constexpr std::uint32_t add = 1;
  constexpr std::uint32_t fromApplication = 1;
  const auto tell = [&](std::string_view what, std::array<std::uint32_t, 4> words) {
    tellWindowManager(*server, connection.root(), window, connection.atom(what), words);
  };
  tell("_NET_WM_DESKTOP", {allWorkspaces, fromApplication, 0, 0});
  tell("_NET_WM_STATE",
       {add, connection.atom("_NET_WM_STATE_ABOVE"), connection.atom("_NET_WM_STATE_STICKY"), fromApplication});
  tell("_NET_WM_STATE", {add, connection.atom("_NET_WM_STATE_SKIP_TASKBAR"),
                         connection.atom("_NET_WM_STATE_SKIP_PAGER"), fromApplication});
  xcb_flush(server);
}

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
  xcb_change_property(server, XCB_PROP_MODE_REPLACE, id, connection_->atom("_NET_WM_DESKTOP"), XCB_ATOM_CARDINAL, 32, 1,
                      &allWorkspaces);
  const std::array states{connection_->atom("_NET_WM_STATE_ABOVE"), connection_->atom("_NET_WM_STATE_STICKY"),
                          connection_->atom("_NET_WM_STATE_SKIP_TASKBAR"),
                          connection_->atom("_NET_WM_STATE_SKIP_PAGER")};
  // Qt adds its own when it shows the window.
  xcb_change_property(server, XCB_PROP_MODE_REPLACE, id, connection_->atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32,
                      static_cast<std::uint32_t>(states.size()), states.data());
  // Who manages the windows and only now ends a former showing takes that away again.
  new OnceExposed(window, [connection = connection_, id] { askToKeepAbove(*connection, id); });
}

}  // namespace

std::unique_ptr<WindowStacking> makeX11WindowStacking(std::shared_ptr<XcbConnection> connection) {
  return std::make_unique<X11WindowStacking>(std::move(connection));
}

}  // namespace Nimbrel
