#include "Screencapture/DesktopHints.h"

#include "Screencapture/XcbOwned.h"

#include <QGuiApplication>
#include <QWindow>

#include <xcb/xcb.h>

#include <cstdint>
#include <string_view>

namespace Nimbrel::Screencapture {

namespace {

/// That of the windows; null when they are not on X11.
xcb_connection_t* connection() {
  const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return application != nullptr ? application->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t* server, std::string_view name) {
  const auto cookie = xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const XcbOwned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(server, cookie, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace

bool isDesktopComposited() {
  auto* server = connection();
  if (server == nullptr) return true;
  const auto cookie = xcb_get_selection_owner(server, atom(server, "_NET_WM_CM_S0"));
  const XcbOwned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(server, cookie, nullptr));
  return reply && reply->owner != XCB_WINDOW_NONE;
}

void keepOnAllWorkspaces(QWindow& window) {
  auto* server = connection();
  if (server == nullptr) return;
  constexpr std::uint32_t all = 0xFFFFFFFF;
  xcb_change_property(server, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                      atom(server, "_NET_WM_DESKTOP"), XCB_ATOM_CARDINAL, 32, 1, &all);
}

}  // namespace Nimbrel::Screencapture
