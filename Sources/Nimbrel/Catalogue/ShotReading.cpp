#include "Catalogue/ShotReading.h"

#include "Catalogue/ShotRow.h"
#include "Catalogue/Statement.h"

#include <string>

namespace Nimbrel {

namespace {

using Steady = std::chrono::steady_clock;

constexpr std::size_t rowsBetweenLooksAtTheClock = 16;

// Equally old rows come in the order in which the index of dates holds them.
constexpr std::string_view newestFirst = " ORDER BY date DESC, id DESC";

const ShotList noShots;

bool isAfter(const Shot& shot, ShotID id, Timestamp date) {
  return shot.date < date || (shot.date == date && shot.id < id);
}

Statement rowsAfter(const ShotList& shots, sqlite3* connection) {
  const auto select = "SELECT " + std::string(shotColumns) + " FROM shots";
  if (shots.empty()) return {connection, select + std::string(newestFirst)};
  return {connection,
          select + " WHERE (date, id) < (?, ?)" + std::string(newestFirst),
          {shots.back()->date, shots.back()->id}};
}

}  // namespace

ShotReading::ShotReading(const Database& database, const ShotList& former) : database_(database), former_(former) {
  shots_.reserve(former.size());
}

ShotReading::ShotReading(const Database& database) : ShotReading(database, noShots) {}

ShotReading::Outcome ShotReading::readFor(std::chrono::nanoseconds time) {
  const auto start = Steady::now();
  auto row = rowsAfter(shots_, database_.db_);
  for (std::size_t read = 1; row.step(); ++read) {
    add(row);
    if (read % rowsBetweenLooksAtTheClock == 0 && Steady::now() - start >= time) return Outcome::More;
  }
  return Outcome::Done;
}

void ShotReading::add(const Statement& row) {
  const auto* known = formerValue(idOfRow(row), dateOfRow(row));
  if (known != nullptr && rowReadsAs(row, **known)) {
    shots_.push_back(*known);
  } else {
    shots_.push_back(std::make_shared<const Shot>(shotFromRow(row)));
  }
}

/// Both lists have one order, so that those passed over are gone.
const ShotPtr* ShotReading::formerValue(ShotID id, Timestamp date) {
  while (nextFormer_ < former_.size()) {
    const auto& candidate = former_[nextFormer_];
    if (candidate->id == id) return &former_[nextFormer_++];
    if (isAfter(*candidate, id, date)) return nullptr;
    ++nextFormer_;
  }
  return nullptr;
}

}  // namespace Nimbrel
