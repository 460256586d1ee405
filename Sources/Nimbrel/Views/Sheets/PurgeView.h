#pragma once

#include "Views/Sheets/ShotSheet.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

namespace Nimbrel {

class ShotTable;
class Store;

/// The sheet that moves all shots older than an age to the Trash, but for favourites.
class PurgeView final : public ShotSheet {
  Q_OBJECT

 public:
  /// The store must outlive it.
  PurgeView(Store& store, QWidget* parent);

 private:
  void addControls();
  void addButtons();
  void refresh();
  [[nodiscard]] int days() const;
  void purge();

  Store& store_;
  QComboBox* days_;
  QCheckBox* inboxOnly_ = nullptr;
  ShotTable* table_;
  Placeholder* placeholder_;
  QPushButton* purge_ = nullptr;
};

}  // namespace Nimbrel
