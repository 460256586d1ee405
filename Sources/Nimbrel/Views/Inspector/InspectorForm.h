#pragma once

#include "Views/Inspector/ActionsSection.h"
#include "Views/Inspector/DetailsSection.h"
#include "Views/Inspector/WarningSection.h"
#include "Views/Shared/GroupedForm.h"

#include <QWidget>

#include <vector>

namespace Nimbrel {

/// Everything that is known of a shot that is not protected, and all that can be done with it. It exists only while
/// such a shot is shown.
class InspectorForm final : public QWidget {
  Q_OBJECT

 public:
  explicit InspectorForm(const InspectorContext& context, QWidget* parent = nullptr);

  /// The drafts are to be the shot's by then.
  void setShot(const ShotPtr& shot);
  void setCanEdit(bool canEdit);
  void setCanPin(bool canPin);
  /// Closes what stands open over the form.
  void closePopovers();

 Q_SIGNALS:
  void editClicked();
  void pinClicked();
  void shareClicked(QWidget* button);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  /// The scroll bar beside the form stands in its margin.
  void placeMargins();

  GroupedForm* form_;
  WarningSection* warning_;
  ActionsSection* actions_;
  DetailsSection* details_;
  std::vector<ShotSection*> sections_;
};

}  // namespace Nimbrel
