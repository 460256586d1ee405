#pragma once

#include "Store/Store.h"

#include <utility>

namespace Nimbrel {

/// In the order in which their signals are told.
enum class Store::Fact : std::uint8_t {
  shots,
  derived,
  filter,
  query,
  searchResult,
  unlockedSensitiveIDs,
  selection,
  tags,
  status,
  captureBusy,
  recording,
  lastCapturedID,
  lastRecordingURL,
  showRecordingTools,
  showPurge,
  showDuplicates,
  showShrink,
  showCleanup,
  editRequestNonce,
  showMenuBar,
  shrinkProgress,
  count
};

/// Holds the signals of a Store back until the outermost operation ends, so that each fact is told once.
class Store::Operation {
 public:
  explicit Operation(Store& store) : store_(store) { ++store_.operations_; }
  ~Operation() {
    if (--store_.operations_ == 0) store_.tell();
  }
  Operation(const Operation&) = delete;
  Operation& operator=(const Operation&) = delete;

 private:
  Store& store_;
};

template <class T>
void Store::publish(T& field, T value, Fact fact) {
  if (field == value) return;
  field = std::move(value);
  note(fact);
}

}  // namespace Nimbrel
