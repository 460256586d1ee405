#pragma once

#include "Views/Sheets/ShotSheet.h"

#include <QPushButton>

namespace Nimbrel {

class ShotTable;
class Store;

/// The sheet that lists what could go, each with its reason. All of it is selected at first; what the user leaves
/// selected goes to the Trash.
class CleanupSuggestionsView final : public ShotSheet {
  Q_OBJECT

 public:
  /// The store must outlive it.
  CleanupSuggestionsView(Store& store, QWidget* parent);

 private:
  void refresh();
  void showSelection();
  void cleanUp();

  Store& store_;
  ShotTable* table_;
  QPushButton* cleanUp_;
};

}  // namespace Nimbrel
