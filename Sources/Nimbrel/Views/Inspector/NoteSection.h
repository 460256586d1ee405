#pragma once

#include "Views/Inspector/NoteField.h"
#include "Views/Inspector/ShotSection.h"

namespace Nimbrel {

/// The user's note on a shot.
class NoteSection final : public ShotSection {
  Q_OBJECT

 public:
  explicit NoteSection(const InspectorContext& context);

 protected:
  void fill(const Shot& shot) override;

 private:
  void submit() const;

  NoteField* field_;
};

}  // namespace Nimbrel
