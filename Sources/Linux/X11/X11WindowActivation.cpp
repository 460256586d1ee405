#include "Linux/X11/X11WindowActivation.h"

#include "Linux/X11/StartupNotice.h"
#include "Linux/X11/WindowConnection.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <utility>

namespace Nimbrel {

namespace {

constexpr std::uint32_t allWorkspaces = 0xFFFFFFFF;
/// As if a task bar asked: what applications ask for by themselves is refused while the user works elsewhere.
constexpr std::uint32_t onBehalfOfUser = 2;

std::optional<std::uint32_t> numberOf(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property) {
  const auto cookie = xcb_get_property(server, 0, window, property, XCB_ATOM_CARDINAL, 0, 1);
  const XcbOwned<xcb_get_property_reply_t> reply(xcb_get_property_reply(server, cookie, nullptr));
  if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) < 4) return std::nullopt;
  std::uint32_t number = 0;
  std::memcpy(&number, xcb_get_property_value(reply.get()), sizeof number);
  return number;
}

class X11WindowActivation final : public WindowActivation {
 public:
  explicit X11WindowActivation(std::shared_ptr<XcbConnection> connection) : connection_(std::move(connection)) {}

  void bringToFront(QWindow& window, const std::string& token) override {
    auto* server = connectionOfWindows();
    if (server == nullptr || !connection_->isUp()) return window.requestActivate();
    const auto id = static_cast<xcb_window_t>(window.winId());
    moveToWorkspaceInUse(server, id);
    tell(server, id, "_NET_ACTIVE_WINDOW", {onBehalfOfUser, StartupNotice::timeOf(token)});
    if (!token.empty()) endStart(server, id, token);
    xcb_flush(server);
  }

 private:
  /// A window elsewhere would not be brought to the front, or would take the user along.
  void moveToWorkspaceInUse(xcb_connection_t* server, xcb_window_t window) {
    const auto property = connection_->atom("_NET_WM_DESKTOP");
    if (numberOf(server, window, property) == allWorkspaces) return;
    const auto inUse = numberOf(server, connection_->root(), connection_->atom("_NET_CURRENT_DESKTOP"));
    if (inUse) tell(server, window, "_NET_WM_DESKTOP", {*inUse, onBehalfOfUser});
  }

  void tell(xcb_connection_t* server, xcb_window_t window, std::string_view what, std::array<std::uint32_t, 2> words) {
    tellWindowManager(*server, connection_->root(), window, connection_->atom(what), words);
  }

  /// Until somebody says so the desktop shows that a program is being started.
  void endStart(xcb_connection_t* server, xcb_window_t window, const std::string& token) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = window;
    event.type = connection_->atom("_NET_STARTUP_INFO_BEGIN");
    for (const auto& message : StartupNotice::removal(token)) {
      std::copy(message.begin(), message.end(), event.data.data8);
      std::array<char, sizeof event> bytes{};
      std::memcpy(bytes.data(), &event, sizeof event);
      xcb_send_event(server, 0, connection_->root(), XCB_EVENT_MASK_PROPERTY_CHANGE, bytes.data());
      event.type = connection_->atom("_NET_STARTUP_INFO");
    }
  }

  std::shared_ptr<XcbConnection> connection_;
};

}  // namespace

std::unique_ptr<WindowActivation> makeX11WindowActivation(std::shared_ptr<XcbConnection> connection) {
  return std::make_unique<X11WindowActivation>(std::move(connection));
}

}  // namespace Nimbrel
