#pragma once

#include "Views/Inspector/ShotSection.h"
#include "Views/Inspector/TagChips.h"

namespace Nimbrel {

/// The tags of a shot, and a field for another one.
class TagsSection final : public ShotSection {
  Q_OBJECT

 public:
  explicit TagsSection(const InspectorContext& context);

 protected:
  void fill(const Shot& shot) override;

 private:
  void addTag();

  QLineEdit* field_;
  TagChips* chips_;
};

}  // namespace Nimbrel
