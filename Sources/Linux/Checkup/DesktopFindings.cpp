#include "Linux/Checkup/Findings.h"
#include "Linux/X11/X11Hotkeys.h"
#include "Linux/X11/XcbConnection.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

namespace Nimbrel::Checkup {

namespace {

constexpr int takenOnX11 = 10;  ///< the number that the server has for it

/// The screen that the environment names, 0 where it names none.
int screenNumber() {
  char* host = nullptr;
  int display = 0;
  int screen = 0;
  if (xcb_parse_display(nullptr, &host, &display, &screen) == 0) return 0;
  std::free(host);
  return screen;
}

/// Whether a program shows icons that are windows, as of old.
bool hasOldTray() {
  XcbConnection connection;
  if (!connection.isUp()) return false;
  const auto selection = connection.atom("_NET_SYSTEM_TRAY_S" + std::to_string(screenNumber()));
  const XcbOwned<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(connection.get(), xcb_get_selection_owner(connection.get(), selection), nullptr));
  return reply && reply->owner != XCB_WINDOW_NONE;
}

/// Why the server would not let us have a combination; absent where it would.
std::optional<HotkeyFailure> failureOnX11(HotkeyAction action) {
  const auto hotkeys = makeX11Hotkeys(std::make_shared<XcbConnection>());
  std::optional<HotkeyFailure> found;
  hotkeys->observe(
      {.pressed = {}, .failed = [&found](HotkeyAction, const HotkeyFailure& failure) { found = failure; }});
  hotkeys->hold(action);
  hotkeys->release(action);
  return found;
}

Finding hotkeyOnX11(HotkeyAction action, bool isWanted) {
  const auto name = "hotkey " + std::string(hotkeyName(action));
  const auto failure = failureOnX11(action);
  if (!failure) return {name, true, isWanted ? "free; Nimbrel takes it when it runs" : "free"};
  if (failure->error == HotkeyFailure::notOffered)
    return {name, false, "the X server that DISPLAY names does not answer"};
  if (failure->error != takenOnX11) return {name, false, "no key of this keyboard gives it: add a layout that does"};
  if (isWanted) return {name, true, "in use; if it does nothing, another program has it: free it in its settings"};
  return {name, false, "another program has it: free it in the settings of that program, or of the desktop"};
}

Finding hotkeyOnWayland(HotkeyAction action, bool hasPortal) {
  const auto name = "hotkey " + std::string(hotkeyName(action));
  if (hasPortal) return {name, true, "the desktop asks, and shows in its settings which keys it is"};
  return {name, false,
          "this desktop lets no program have one: set a shortcut of the desktop's own for an action of Nimbrel's "
          "launcher"};
}

}  // namespace

Finding sessionFinding(SessionKind session) {
  switch (session) {
    case SessionKind::x11:
      return {"desktop session", true, "X11"};
    case SessionKind::wayland:
      return {"desktop session", true, "Wayland: the desktop asks before captures and hotkeys"};
    case SessionKind::none:
      break;
  }
  return {"desktop session", false, "none: start this within a desktop, where DISPLAY or WAYLAND_DISPLAY is set"};
}

Finding trayFinding(const BusFindings& bus) {
  if (bus.hasTrayHost) return {"tray", true, "on the session bus"};
  if (hasOldTray()) return {"tray", true, "on the X server"};
  return {"tray", false,
          "nothing shows Nimbrel's icon: switch the desktop's tray on, or its extension for one; the window and the "
          "launcher's actions have everything"};
}

std::vector<Finding> portalFindings(SessionKind session, const BusFindings& bus) {
  std::vector<Finding> findings;
  for (const auto& portal : portalNames()) {
    Finding finding{"portal " + portal, bus.portals.contains(portal), ""};
    const bool isNeeded = session == SessionKind::wayland || portal == "Settings";
    if (!finding.isPresent) {
      finding.advice = isNeeded
                           ? "install xdg-desktop-portal and the backend for your desktop, if there is one that has it"
                           : "without Wayland it is not needed";
    }
    findings.push_back(std::move(finding));
  }
  return findings;
}

std::vector<Finding> hotkeyFindings(SessionKind session, const BusFindings& bus, const std::set<HotkeyAction>& wanted) {
  std::vector<Finding> findings;
  for (const auto action : allHotkeyActions) {
    switch (session) {
      case SessionKind::x11:
        findings.push_back(hotkeyOnX11(action, wanted.contains(action)));
        break;
      case SessionKind::wayland:
        findings.push_back(hotkeyOnWayland(action, bus.portals.contains("GlobalShortcuts")));
        break;
      case SessionKind::none:
        findings.push_back({"hotkey " + std::string(hotkeyName(action)), false, "start this within a desktop session"});
        break;
    }
  }
  return findings;
}

}  // namespace Nimbrel::Checkup
