#include "Store/UnlockedShots.h"

namespace Nimbrel {

bool UnlockedShots::contains(const Shot& shot) const {
  const auto found = added_.find(shot.id);
  return found != added_.end() && found->second == shot.added;
}

UnlockedShots UnlockedShots::with(const ShotList& shots) const {
  auto all = *this;
  for (const auto& shot : shots) all.add(*shot);
  return all;
}

UnlockedShots UnlockedShots::among(const ShotList& shots) const {
  UnlockedShots remaining;
  if (ids_.empty()) return remaining;
  for (const auto& shot : shots) {
    if (contains(*shot)) remaining.add(*shot);
  }
  return remaining;
}

void UnlockedShots::add(const Shot& shot) {
  ids_.insert(shot.id);
  added_.insert_or_assign(shot.id, shot.added);
}

}  // namespace Nimbrel
