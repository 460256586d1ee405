// The key combinations that work from everywhere, as the settings have them.

#include "Store/Store.h"

namespace Nimbrel {

void Store::applyHotkeySetting() {
  // The companion sees the setting by itself, and goes on when this process has ended.
  const bool isLeftToCompanion = context_.role == ProcessRole::mainApplication && context_.isCompanionRunning();
  const auto apply = [&](Hotkeys::Action action, bool isOn, const Hotkeys::Callback& run) {
    if (isOn && !isLeftToCompanion) {
      hotkeys_.registerAction(action, run);
    } else {
      hotkeys_.unregister(action);
    }
  };
  apply(Hotkeys::Action::capture, settings_.captureHotkey(), [this] { capture(CaptureMode::area, Panel::Keep); });
  apply(Hotkeys::Action::quickFind, settings_.quickFindHotkey(), [this] { Q_EMIT quickFindRequested(); });
}

}  // namespace Nimbrel
