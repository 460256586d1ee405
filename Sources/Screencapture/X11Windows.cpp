#include "Screencapture/X11Windows.h"

#include "Screencapture/X11Monitors.h"

#include <QMargins>

#include <algorithm>
#include <map>
#include <ranges>

namespace Nimbrel::Screencapture {

namespace {

using Windows = std::vector<xcb_window_t>;

Windows childrenOf(const X11Display& display, xcb_window_t window) {
  const XcbOwned<xcb_query_tree_reply_t> reply(
      xcb_query_tree_reply(display.get(), xcb_query_tree(display.get(), window), nullptr));
  if (!reply) return {};
  const auto* children = xcb_query_tree_children(reply.get());
  return {children, children + xcb_query_tree_children_length(reply.get())};
}

/// The one right below the root that a window is in, or itself; 0 for one that is gone.
xcb_window_t outermost(const X11Display& display, xcb_window_t window) {
  while (true) {
    const XcbOwned<xcb_query_tree_reply_t> reply(
        xcb_query_tree_reply(display.get(), xcb_query_tree(display.get(), window), nullptr));
    if (!reply || reply->parent == 0) return 0;
    if (reply->parent == display.root()) return window;
    window = reply->parent;
  }
}

/// Those right below the root that are seen, with their borders, from the lowest to the uppermost. All are asked before
/// the first answer is waited for.
std::vector<StackedWindow> shownWindows(const X11Display& display) {
  struct Question {
    xcb_window_t window;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
  };
  std::vector<Question> questions;
  for (const auto window : childrenOf(display, display.root())) {
    questions.push_back(
        {window, xcb_get_window_attributes(display.get(), window), xcb_get_geometry(display.get(), window)});
  }
  std::vector<StackedWindow> shown;
  for (const auto& question : questions) {
    const XcbOwned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(display.get(), question.attributes, nullptr));
    const XcbOwned<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(display.get(), question.geometry, nullptr));
    if (!attributes || !geometry || attributes->map_state != XCB_MAP_STATE_VIEWABLE) continue;
    if (attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT) continue;
    const int borders = 2 * geometry->border_width;
    shown.push_back({question.window,
                     QRect(geometry->x, geometry->y, geometry->width + borders, geometry->height + borders), false});
  }
  return shown;
}

/// What a property says of the four sides: left, right, top, bottom.
std::optional<QMargins> extents(const X11Display& display, xcb_window_t window, std::string_view property) {
  const auto numbers = display.numbers(window, property);
  if (numbers.size() != 4) return std::nullopt;
  const auto side = [&](std::size_t index) { return static_cast<int>(std::min(numbers[index], 1000U)); };
  return QMargins(side(0), side(2), side(1), side(3));
}

/// The inside of a window, without its border, on the screen.
QRect insideOf(const X11Display& display, xcb_window_t window) {
  const auto size = xcb_get_geometry(display.get(), window);
  const auto place = xcb_translate_coordinates(display.get(), window, display.root(), 0, 0);
  const XcbOwned<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(display.get(), size, nullptr));
  const XcbOwned<xcb_translate_coordinates_reply_t> origin(
      xcb_translate_coordinates_reply(display.get(), place, nullptr));
  if (!geometry || !origin) return {};
  return {origin->dst_x, origin->dst_y, geometry->width, geometry->height};
}

/// Frames may have a shadow or a margin to grab them by around what is seen, and so may windows without one.
QRect seenArea(const X11Display& display, xcb_window_t client, const StackedWindow& outer) {
  if (client == outer.id) {
    const auto shadow = extents(display, client, "_GTK_FRAME_EXTENTS");
    return shadow ? outer.area.marginsRemoved(*shadow) : outer.area;
  }
  const auto frame = extents(display, client, "_NET_FRAME_EXTENTS");
  const auto inside = insideOf(display, client);
  if (!frame || inside.isEmpty()) return outer.area;
  return inside.marginsAdded(*frame) & outer.area;
}

bool isDesktop(const X11Display& display, xcb_window_t client) {
  const auto types = display.numbers(client, "_NET_WM_WINDOW_TYPE");
  return std::ranges::find(types, display.atom("_NET_WM_WINDOW_TYPE_DESKTOP")) != types.end();
}

void findApplications(const X11Display& display, const Windows& clients, std::vector<StackedWindow>& windows) {
  for (const auto client : clients) {
    const auto outer = outermost(display, client);
    const auto window = std::ranges::find(windows, outer, &StackedWindow::id);
    if (window == windows.end() || isDesktop(display, client)) continue;
    window->area = seenArea(display, client, *window);
    window->isApplication = !window->area.isEmpty();
  }
}

}  // namespace

DesktopLayout desktopLayout(const X11Display& display) {
  DesktopLayout layout{display.bounds(), monitorsOf(display), shownWindows(display)};
  const auto clients = display.numbers(display.root(), "_NET_CLIENT_LIST_STACKING");
  findApplications(display, clients, layout.windows);
  if (!clients.empty() || !display.numbers(display.root(), "_NET_SUPPORTING_WM_CHECK").empty()) return layout;
  for (auto& window : layout.windows) window.isApplication = true;
  return layout;
}

}  // namespace Nimbrel::Screencapture
