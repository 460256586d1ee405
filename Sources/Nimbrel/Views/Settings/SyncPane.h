#pragma once

#include "Views/Settings/FolderRow.h"
#include "Views/Settings/SettingsPane.h"
#include "Views/Shared/BusyRing.h"

#include <QLabel>
#include <QLineEdit>

namespace Nimbrel {

/// The folder of the encrypted exchange, and the passphrase that one exchange is started with: it lives in the field
/// alone, and leaves it with the exchange or the pane.
class SyncPane final : public SettingsPane {
  Q_OBJECT

 public:
  explicit SyncPane(Store& store);
  ~SyncPane() override;

 private:
  void addPassphrase();
  void addSyncRow();
  void chooseFolder();
  void refresh();
  void showProgress();
  void syncNow();

  FolderRow* folder_;
  QLineEdit* passphrase_;
  QPushButton* syncNow_;
  BusyRing* ring_;
  QLabel* count_;
};

}  // namespace Nimbrel
