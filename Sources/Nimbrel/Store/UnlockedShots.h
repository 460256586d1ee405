#pragma once

#include "Catalogue/Database.h"
#include "Foundation/Timestamp.h"
#include "Model/Models.h"

#include <unordered_map>

namespace Nimbrel {

/// The sensitive shots that the owner has unlocked. A catalogue gives the id of a row that is gone to a new one, so
/// that shots are known by id and by when they were added. A plain value.
class UnlockedShots {
 public:
  [[nodiscard]] const ShotIDSet& ids() const { return ids_; }
  [[nodiscard]] bool contains(const Shot& shot) const;

  /// These and the given ones.
  [[nodiscard]] UnlockedShots with(const ShotList& shots) const;
  /// Those that are among the given ones.
  [[nodiscard]] UnlockedShots among(const ShotList& shots) const;

  bool operator==(const UnlockedShots&) const = default;

 private:
  void add(const Shot& shot);

  ShotIDSet ids_;
  std::unordered_map<ShotID, Timestamp> added_;  ///< of the same ids
};

}  // namespace Nimbrel
