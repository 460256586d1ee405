// A window that says about itself what the arguments tell: pairs of a property of text and its value, WM_CLASS with a
// slash between instance and class. "_NET_WM_PID own" gives the process, "_NET_WM_PID 12" another's. Stays until
// killed.

#include <xcb/xcb.h>
#include <xcb/xproto.h>

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

xcb_atom_t atomOf(xcb_connection_t* connection, const std::string& name) {
  auto* reply = xcb_intern_atom_reply(
      connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str()), nullptr);
  const auto atom = reply->atom;
  std::free(reply);
  return atom;
}

void say(xcb_connection_t* connection, xcb_window_t window, const std::string& name, std::string value) {
  const auto property = atomOf(connection, name);
  if (name == "_NET_WM_PID") {
    const auto process = static_cast<std::uint32_t>(value == "own" ? ::getpid() : std::stoi(value));
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_CARDINAL, 32, 1, &process);
    return;
  }
  const bool isPlain = name.starts_with("WM_");
  if (name == "WM_CLASS") {
    value += '\0';
    if (const auto slash = value.find('/'); slash != std::string::npos) value[slash] = '\0';
  }
  const auto type = isPlain ? xcb_atom_t{XCB_ATOM_STRING} : atomOf(connection, "UTF8_STRING");
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, 8,
                      static_cast<std::uint32_t>(value.size()), value.data());
}

}  // namespace

int main(int argc, char** argv) {
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(connection) != 0) return 1;
  const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  const auto window = xcb_generate_id(connection);
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 20, 20, 200, 100, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_BACK_PIXEL, &screen->white_pixel);
  for (int i = 1; i + 1 < argc; i += 2) say(connection, window, argv[i], argv[i + 1]);
  xcb_map_window(connection, window);
  xcb_flush(connection);
  while (auto* event = xcb_wait_for_event(connection)) std::free(event);
  xcb_disconnect(connection);
  return 0;
}
