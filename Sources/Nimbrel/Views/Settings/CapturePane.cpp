#include "Views/Settings/CapturePane.h"

namespace Nimbrel {

CapturePane::CapturePane(Store& store, const Act& applyHotkeySetting)
    : SettingsPane(store, tr("Capture"), QStringLiteral("capture")) {
  addMenuBarToggle();
  addSwitch(tr("Global capture shortcut (⌃⇧5)"), settings().captureHotkey, {}, applyHotkeySetting);
  addSwitch(tr("Quick find shortcut (⌃⇧Space)"), settings().quickFindHotkey, {}, applyHotkeySetting);
  addNotes({tr("Quick find searches your screenshots from any app and copies the one you pick, ready to paste."),
            tr("The capture panel offers selection, window and screen capture, recording, save location and a "
               "delay.")});
}

void CapturePane::addMenuBarToggle() {
  auto* toggle = addToggle(tr("Show in the menu bar"));
  toggle->setObjectName(QStringLiteral("settings.showMenuBar"));
  const auto show = [this, toggle] { toggle->setChecked(store().showMenuBar()); };
  show();
  connect(&store(), &Store::showMenuBarChanged, this, show);
  connect(toggle, &QCheckBox::toggled, this, [this](bool isOn) {
    if (store().showMenuBar() != isOn) store().setShowMenuBar(isOn);
  });
}

}  // namespace Nimbrel
