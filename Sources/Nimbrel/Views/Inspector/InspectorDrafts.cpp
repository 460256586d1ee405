#include "Views/Inspector/InspectorDrafts.h"

namespace Nimbrel {

void InspectorDrafts::load(const Shot& shot) {
  name = shot.name;
  note = shot.note;
  ocrQuery.clear();
}

void InspectorDrafts::follow(const Shot& before, const Shot& now) {
  if (name == before.name) name = now.name;
  if (note == before.note) note = now.note;
}

}  // namespace Nimbrel
