#pragma once

#include "Views/Inspector/ShotSection.h"

#include <QPushButton>

namespace Nimbrel {

/// That a shot looks as if it held something that others should not see; absent for all other shots.
class WarningSection final : public ShotSection {
  Q_OBJECT

 public:
  explicit WarningSection(const InspectorContext& context);

  void setCanEdit(bool canEdit) { edit_->setEnabled(canEdit); }

 Q_SIGNALS:
  void editClicked();

 protected:
  void fill(const Shot& shot) override;

 private:
  QLabel* labels_;
  QPushButton* edit_;
};

}  // namespace Nimbrel
