#pragma once

#include "Views/Inspector/NameField.h"
#include "Views/Inspector/ShotSection.h"
#include "Views/Inspector/SourceEditor.h"

#include <QPointer>

namespace Nimbrel {

/// Name, time, source, kind, size and place of a shot; the name and the source can be changed.
class DetailsSection final : public ShotSection {
  Q_OBJECT

 public:
  explicit DetailsSection(const InspectorContext& context);
  ~DetailsSection() override;

  /// Closes the popover, if it is open, without telling anything.
  void closeEditor();

 protected:
  void fill(const Shot& shot) override;

 private:
  class Source;

  QWidget* nameRow();
  void rename();
  void editSource();
  void setShownName(const std::string& name);

  NameField* name_;
  ElidedLabel* taken_;
  Source* source_;
  LinkButton* recognition_;
  ElidedLabel* kind_;
  ElidedLabel* size_;
  ElidedLabel* place_;
  QPointer<SourceEditor> editor_;
};

}  // namespace Nimbrel
