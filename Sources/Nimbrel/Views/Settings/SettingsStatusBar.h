#pragma once

#include "Store/Store.h"

#include <QLabel>
#include <QWidget>

namespace Nimbrel {

/// The row below the settings: a button that scans, and how many shots are still to be read.
class SettingsStatusBar final : public QWidget {
  Q_OBJECT

 public:
  /// The Store must outlive it.
  explicit SettingsStatusBar(Store& store, QWidget* parent = nullptr);

 private:
  void showRemaining();

  Store& store_;
  QLabel* remaining_;
};

}  // namespace Nimbrel
