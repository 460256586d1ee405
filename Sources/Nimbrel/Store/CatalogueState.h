#pragma once

#include "Catalogue/Database.h"

#include <cstdint>

namespace Nimbrel {

/// The state of the catalogue as this process can tell it from another.
struct CatalogueState {
  int othersVersion = 0;
  std::int64_t ownChanges = 0;

  [[nodiscard]] static CatalogueState of(const Database& database) {
    return {.othersVersion = database.dataVersion(), .ownChanges = database.ownChanges()};
  }

  bool operator==(const CatalogueState&) const = default;
};

}  // namespace Nimbrel
