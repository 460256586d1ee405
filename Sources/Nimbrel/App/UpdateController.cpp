#include "App/UpdateController.h"

#include <utility>

namespace Nimbrel {

UpdateController::UpdateController(UpdateSettings settings, Store& store, Workspace& workspace)
    : settings_(std::move(settings)), store_(store), workspace_(workspace) {}

void UpdateController::checkForUpdates() {
  if (!settings_.isConfigured(ProcessRole::mainApplication)) {
    return store_.setStatus("No updates are set up for this build");
  }
  workspace_.openURL(settings_.feedURL);
}

}  // namespace Nimbrel
