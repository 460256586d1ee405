#include "Store/ProcessRole.h"

#include <algorithm>

namespace Nimbrel {

ProcessRole processRole(const AppIdentity& identity, std::span<const std::string_view> arguments) {
  if (std::ranges::find(arguments, scanArgument) != arguments.end()) return ProcessRole::headless;
  return identity.isMenuBarHelper() ? ProcessRole::menuBarCompanion : ProcessRole::mainApplication;
}

bool isBackgroundWorker(ProcessRole role) {
  return role == ProcessRole::menuBarCompanion || role == ProcessRole::headless;
}

}  // namespace Nimbrel
