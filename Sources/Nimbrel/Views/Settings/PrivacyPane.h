#pragma once

#include "Views/Settings/SettingsPane.h"

#include <QDialog>

#include <functional>

namespace Nimbrel {

/// Whether sensitive shots are hidden, and what is promised about them all.
class PrivacyPane final : public SettingsPane {
  Q_OBJECT

 public:
  /// Makes the sheet with the privacy policy, a child of the window.
  using Policy = std::function<QDialog*(QWidget* window)>;

  PrivacyPane(Store& store, Policy policy);

 private:
  void showPolicy();

  Policy policy_;
};

}  // namespace Nimbrel
