#pragma once

#include "Catalogue/Database.h"

#include <chrono>
#include <cstddef>
#include <utility>

namespace Nimbrel {

class Statement;

/// All shots of a catalogue, newest first, read in as many stretches as one likes. Rows that change between two
/// stretches come as they were when their stretch was read, none of them twice. Main thread.
class ShotReading {
 public:
  /// Rows that read as they do in `former`, an earlier answer, share its values. Both must stay as they are until the
  /// object is gone.
  ShotReading(const Database& database, const ShotList& former);
  ShotReading(const Database& database, ShotList&& former) = delete;
  /// Shares nothing.
  explicit ShotReading(const Database& database);

  enum class Outcome { More, Done };
  /// Reads on for about that long.
  Outcome readFor(std::chrono::nanoseconds time);
  Outcome readAll() { return readFor(std::chrono::nanoseconds::max()); }

  /// What has been read so far.
  [[nodiscard]] const ShotList& shots() const { return shots_; }
  [[nodiscard]] ShotList take() { return std::move(shots_); }

 private:
  void add(const Statement& row);
  [[nodiscard]] const ShotPtr* formerValue(ShotID id, Timestamp date);

  const Database& database_;
  const ShotList& former_;
  std::size_t nextFormer_ = 0;
  ShotList shots_;
};

}  // namespace Nimbrel
