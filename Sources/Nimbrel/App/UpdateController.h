#pragma once

#include "App/UpdateSettings.h"
#include "Platform/Workspace.h"
#include "Store/Store.h"

namespace Nimbrel {

/// Looks for updates when the user asks for it. Main thread.
class UpdateController {
 public:
  /// Store and workspace must outlive it. A build that asks for no updates says so in the Store's status.
  UpdateController(UpdateSettings settings, Store& store, Workspace& workspace);

  /// Opens the place where a released build has its updates.
  void checkForUpdates();

 private:
  UpdateSettings settings_;
  Store& store_;
  Workspace& workspace_;
};

}  // namespace Nimbrel
