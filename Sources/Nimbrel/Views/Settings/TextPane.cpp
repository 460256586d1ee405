#include "Views/Settings/TextPane.h"

namespace Nimbrel {

TextPane::TextPane(Store& store) : SettingsPane(store, tr("Text"), QStringLiteral("text")) {
  addSwitch(tr("Recognize text in screenshots"), settings().runOCR,
            tr("Runs on this Mac with Apple's Vision framework. Nothing is uploaded."));
}

}  // namespace Nimbrel
