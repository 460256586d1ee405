#include "Views/Settings/PrivacyPane.h"

#include <utility>

namespace Nimbrel {

PrivacyPane::PrivacyPane(Store& store, Policy policy)
    : SettingsPane(store, tr("Privacy"), QStringLiteral("privacy")), policy_(std::move(policy)) {
  // The Store locks by itself when it changes, here or elsewhere.
  addSwitch(tr("Hide sensitive previews until authenticated"), settings().protectSensitive,
            tr("Uses Touch ID or your Mac account password. This hides previews inside Nimbrel; original files in "
               "Finder are unchanged."));
  auto* show = settingsButton(tr("View Privacy Policy…"), QStringLiteral("privacyPolicy"));
  connect(show, &QPushButton::clicked, this, &PrivacyPane::showPolicy);
  addControls({show});
}

void PrivacyPane::showPolicy() {
  auto* sheet = policy_ ? policy_(window()) : nullptr;
  if (sheet == nullptr) return;
  sheet->setAttribute(Qt::WA_DeleteOnClose);
  sheet->open();
}

}  // namespace Nimbrel
