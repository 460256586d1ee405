#pragma once

#include "Views/Shared/BusyRing.h"
#include "Views/Sheets/ShotSheet.h"

#include <QCheckBox>
#include <QPushButton>
#include <QSlider>

namespace Nimbrel {

class ShotTable;
class Store;

/// The sheet that encodes shots anew as HEIC. It stays, with how far it is, until that is done or cancelled.
class ShrinkView final : public ShotSheet {
  Q_OBJECT

 public:
  /// The store must outlive it.
  ShrinkView(Store& store, QWidget* parent);

  /// Ends the shrinking too, before the next shot.
  void reject() override;

 private:
  void addControls();
  void addButtons();
  void refresh();
  void setQuality();
  void shrink();
  void showProgress();

  Store& store_;
  GroupedForm* form_;
  QCheckBox* filedOnly_ = nullptr;
  QSlider* quality_;
  QLabel* qualityText_;
  ShotTable* table_;
  BusyRing* ring_;
  QPushButton* shrink_ = nullptr;
  bool isShrinking_ = false;
};

}  // namespace Nimbrel
