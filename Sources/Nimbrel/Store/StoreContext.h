#pragma once

#include "Foundation/Timestamp.h"
#include "Platform/Defaults.h"
#include "Platform/Services.h"
#include "Platform/UserFolders.h"
#include "Store/ProcessRole.h"

#include <functional>
#include <memory>

namespace Nimbrel {

/// Everything that a Store is handed: what it would otherwise have to know of the system it runs on.
struct StoreContext {
  ProcessRole role = ProcessRole::mainApplication;
  UserFolders folders;
  Clock clock;
  Services services;
  std::unique_ptr<Defaults> defaults;  ///< the suite that all processes share; never null
  /// Whether another process does the work of the companion now; never empty.
  std::function<bool()> isCompanionRunning = [] { return false; };
};

}  // namespace Nimbrel
