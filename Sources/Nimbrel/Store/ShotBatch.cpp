#include "Store/ShotBatch.h"

namespace Nimbrel {

void ShotBatch::fill(const ShotList& shots) {
  ids_.clear();
  for (const auto& shot : shots) ids_.push_back(shot->id);
  next_ = 0;
}

bool ShotBatch::hasMovedFrom(std::string_view path) const {
  const auto current = row();
  return current && current->path != path;
}

}  // namespace Nimbrel
