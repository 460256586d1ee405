#pragma once

#include "Views/Settings/SettingsPane.h"

namespace Nimbrel {

/// Whether the text of shots is read.
class TextPane final : public SettingsPane {
  Q_OBJECT

 public:
  explicit TextPane(Store& store);
};

}  // namespace Nimbrel
