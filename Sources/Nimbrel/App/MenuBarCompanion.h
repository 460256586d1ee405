#pragma once

#include "Model/AppIdentity.h"
#include "Platform/FolderLock.h"
#include "Platform/UserFolders.h"

#include <optional>
#include <string>

/// The worker that runs beside the window and goes on without it: the same executable under another name. It is known
/// by what it holds, the folder of the user's catalogue, so that each catalogue has a companion of its own. Main
/// thread.
namespace Nimbrel::MenuBarCompanion {

/// The identifier of its process.
[[nodiscard]] std::string bundleIdentifier();

/// Makes this process known as the companion of that catalogue, whose folder must be there, for as long as the result
/// lives; absent when another one is.
[[nodiscard]] std::optional<FolderLock> announce(const UserFolders& folders);

/// Whether a companion of that catalogue runs, in whatever process.
[[nodiscard]] bool isRunning(const UserFolders& folders);

/// Starts the companion where this process is none and none runs. `programs` is the folder that ours lie in; without
/// one for it nothing happens, and a failure goes to the log.
void launchIfNeeded(const AppIdentity& identity, const UserFolders& folders, const std::string& programs);

}  // namespace Nimbrel::MenuBarCompanion
