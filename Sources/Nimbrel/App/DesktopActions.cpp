#include "App/DesktopActions.h"

namespace Nimbrel {

DesktopActions::DesktopActions(Store& store) {
  const auto capture = [&store](CaptureMode mode) {
    // Our windows are in front because the user had to start something, and not to be in the picture.
    return [&store, mode](const std::string&) { store.capture(mode, Store::Panel::Dismiss); };
  };
  add("selection", capture(CaptureMode::area));
  add("window", capture(CaptureMode::window));
  add("screen", capture(CaptureMode::screen));
  // Where there is no tray, it is what ends a recording as well.
  add("record", [&store, begin = capture(CaptureMode::recordArea)](const std::string& token) {
    store.recording() ? store.stopRecording() : begin(token);
  });
}

bool DesktopActions::run(const std::string& name, const std::string& token) const {
  const auto action = actions_.find(name);
  if (action == actions_.end()) return false;
  action->second(token);
  return true;
}

}  // namespace Nimbrel
