#include "Screencapture/X11Monitors.h"

#include <xcb/randr.h>

#include <utility>

namespace Nimbrel::Screencapture {

namespace {

std::string nameOf(const X11Display& display, xcb_atom_t atom) {
  const XcbOwned<xcb_get_atom_name_reply_t> reply(
      xcb_get_atom_name_reply(display.get(), xcb_get_atom_name(display.get(), atom), nullptr));
  if (!reply) return {};
  return {xcb_get_atom_name_name(reply.get()), static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

/// Whether the server knows monitors, and not only the outputs of its graphics cards.
bool knowsMonitors(const X11Display& display) {
  const auto* extension = xcb_get_extension_data(display.get(), &xcb_randr_id);
  if (extension == nullptr || extension->present == 0) return false;
  const XcbOwned<xcb_randr_query_version_reply_t> version(
      xcb_randr_query_version_reply(display.get(), xcb_randr_query_version(display.get(), 1, 5), nullptr));
  return version && std::pair(version->major_version, version->minor_version) >= std::pair(1U, 5U);
}

std::vector<Monitor> toldMonitors(const X11Display& display) {
  std::vector<Monitor> monitors;
  if (!knowsMonitors(display)) return monitors;
  const XcbOwned<xcb_randr_get_monitors_reply_t> reply(
      xcb_randr_get_monitors_reply(display.get(), xcb_randr_get_monitors(display.get(), display.root(), 1), nullptr));
  if (!reply) return monitors;
  for (auto told = xcb_randr_get_monitors_monitors_iterator(reply.get()); told.rem > 0;
       xcb_randr_monitor_info_next(&told)) {
    const auto& info = *told.data;
    const auto area = QRect(info.x, info.y, info.width, info.height) & display.bounds();
    if (!area.isEmpty()) monitors.push_back({nameOf(display, info.name), area, info.primary != 0});
  }
  return monitors;
}

}  // namespace

std::vector<Monitor> monitorsOf(const X11Display& display) {
  auto monitors = toldMonitors(display);
  if (monitors.empty()) monitors.push_back({{}, display.bounds(), true});
  return monitors;
}

}  // namespace Nimbrel::Screencapture
