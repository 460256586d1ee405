#pragma once

#include "Views/Settings/SettingsPane.h"

namespace Nimbrel {

/// From where captures and quick find can be reached.
class CapturePane final : public SettingsPane {
  Q_OBJECT

 public:
  /// `applyHotkeySetting` turns the global shortcuts on and off by the settings.
  CapturePane(Store& store, const Act& applyHotkeySetting);

 private:
  void addMenuBarToggle();
};

}  // namespace Nimbrel
