#pragma once

#include "Store/Store.h"
#include "Views/Shared/ElidedLabel.h"
#include "Views/Shared/GroupedForm.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWidget>

namespace Nimbrel {

/// What stands in the details while several shots are selected: how many they are and how large together, and what can
/// be done with all of them. Main thread.
class MultiSelectionView final : public QWidget {
  Q_OBJECT

 public:
  /// The store is borrowed and must outlive the view.
  explicit MultiSelectionView(Store& store, QWidget* parent = nullptr);

 private:
  void build();
  void addActions(GroupedForm& form);
  void refresh();

  Store& store_;
  QVBoxLayout* column_;
  GroupedForm* form_ = nullptr;
  ElidedLabel* count_ = nullptr;
  ElidedLabel* size_ = nullptr;
  QLineEdit* tag_ = nullptr;
  bool canFile_ = false;
};

}  // namespace Nimbrel
