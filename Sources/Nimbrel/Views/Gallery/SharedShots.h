#pragma once

#include "Model/Models.h"

#include <cstddef>
#include <memory>
#include <utility>

namespace Nimbrel {

/// A list of shots that does not change. Copies share it: that of a large catalogue takes as long to copy and to free
/// as a frame may last. Main thread.
class SharedShots {
 public:
  /// None.
  SharedShots() : SharedShots(ShotList()) {}
  explicit SharedShots(ShotList shots) : shots_(std::make_shared<const ShotList>(std::move(shots))) {}

  [[nodiscard]] const ShotList& list() const { return *shots_; }
  [[nodiscard]] bool empty() const { return shots_->empty(); }
  [[nodiscard]] std::size_t size() const { return shots_->size(); }
  [[nodiscard]] const ShotPtr& operator[](std::size_t place) const { return (*shots_)[place]; }

 private:
  std::shared_ptr<const ShotList> shots_;
};

}  // namespace Nimbrel
