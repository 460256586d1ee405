#include "Linux/Tray/X11TrayHost.h"

#include <string_view>

namespace Nimbrel {

namespace {

/// That of the first screen, which is the only one of servers in use.
constexpr std::string_view traySelection = "_NET_SYSTEM_TRAY_S0";
constexpr std::uint8_t ofSender = 0x80;

}  // namespace

X11TrayHost::X11TrayHost() {
  if (!connection_.isUp()) return;
  connect(&connection_, &XcbConnection::eventCame, this, &X11TrayHost::hear);
  connect(&connection_, &XcbConnection::lost, this, [this] { become(XCB_WINDOW_NONE); });
  // Where a new owner of the selection announces itself.
  select(connection_.root());
  look();
}

void X11TrayHost::select(xcb_window_t window) {
  constexpr std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_.get(), window, XCB_CW_EVENT_MASK, &mask);
}

xcb_window_t X11TrayHost::askOwner() {
  const auto cookie = xcb_get_selection_owner(connection_.get(), connection_.atom(traySelection));
  const XcbOwned<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(connection_.get(), cookie, nullptr));
  return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

void X11TrayHost::look() {
  auto owner = askOwner();
  // It may go between the answer and the wish to hear of that.
  for (auto before = ~owner; owner != XCB_WINDOW_NONE && owner != before; owner = askOwner()) {
    before = owner;
    select(owner);
  }
  connection_.flush();
  become(owner);
}

void X11TrayHost::hear(const xcb_generic_event_t& event) {
  const auto kind = event.response_type & ~ofSender;
  if (kind == XCB_DESTROY_NOTIFY) {
    const auto& gone = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
    if (gone.window == owner_) look();
  } else if (kind == XCB_CLIENT_MESSAGE) {
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    const bool isTray = message.format == 32 && message.type == connection_.atom("MANAGER") &&
                        message.data.data32[1] == connection_.atom(traySelection);
    if (isTray) look();
  }
}

void X11TrayHost::become(xcb_window_t owner) {
  const bool wasThere = isThere();
  owner_ = owner;
  if (isThere() != wasThere) Q_EMIT changed();
}

}  // namespace Nimbrel
