#include "Linux/X11/WindowConnection.h"

#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <cstring>

namespace Nimbrel {

xcb_connection_t* connectionOfWindows() {
  if (qGuiApp == nullptr) return nullptr;
  const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return application != nullptr ? application->connection() : nullptr;
}

void tellWindowManager(xcb_connection_t& server, xcb_window_t root, xcb_window_t window, xcb_atom_t what,
                       std::span<const std::uint32_t> words) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = what;
  std::ranges::copy(words, message.data.data32);
  std::array<char, sizeof message> bytes{};
  std::memcpy(bytes.data(), &message, sizeof message);
  constexpr auto toWindowManager = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
  xcb_send_event(&server, 0, root, toWindowManager, bytes.data());
}

}  // namespace Nimbrel
