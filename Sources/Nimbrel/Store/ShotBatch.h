#pragma once

#include "Catalogue/Database.h"
#include "Model/Models.h"

#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// The shots that a queue takes one after the other. Their rows live on while they wait and while they are worked on: a
/// shot may be removed, filed under another path or done by another process, so its row is read at every step.
class ShotBatch {
 public:
  /// As many shots as there are.
  static constexpr int unlimited = std::numeric_limits<int>::max();

  /// `database` is borrowed and must outlive the batch.
  explicit ShotBatch(const Database& database) : database_(database) {}

  void fill(const ShotList& shots);
  void clear() { fill({}); }
  /// The next shot is the current one; there may be none.
  void passOn() { ++next_; }

  [[nodiscard]] bool isEmpty() const { return remaining() == 0; }
  /// The current shot and those behind it.
  [[nodiscard]] std::size_t remaining() const { return ids_.size() - next_; }

  // The current shot; only while the batch is not empty.

  [[nodiscard]] ShotID currentID() const { return ids_[next_]; }
  /// Its row as it is by now; absent once it is removed.
  [[nodiscard]] std::optional<Shot> row() const { return database_.shot(currentID()); }
  /// Whether it was moved from the path, or its id was given to another file: what was found there may not be its.
  [[nodiscard]] bool hasMovedFrom(std::string_view path) const;

 private:
  const Database& database_;
  std::vector<ShotID> ids_;
  std::size_t next_ = 0;
};

}  // namespace Nimbrel
