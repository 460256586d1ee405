#pragma once

#include "Model/AppIdentity.h"
#include "Platform/FolderLock.h"
#include "Platform/UserFolders.h"

#include <functional>
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

/// A companion with this variable in its environment was started by us and not by the user: another one that runs
/// already is to do this action then, which shows nothing.
inline constexpr const char* unaskedVariable = "NIMBREL_UNASKED";
inline constexpr const char* unaskedAction = "background";

/// Starts the companion where this process is none and none runs. `programs` is the folder that ours lie in; without
/// one for it nothing happens, and a failure goes to the log.
void launchIfNeeded(const AppIdentity& identity, const UserFolders& folders, const std::string& programs);

/// From the companion: starts the application, which brings the one that runs to the front where there is one. `token`
/// is what the desktop gave for that; may be empty. A failure goes to the log. In the application itself it only calls
/// `raise`.
void openMainApp(const AppIdentity& identity, const std::string& programs, const std::string& token,
                 const std::function<void()>& raise);

}  // namespace Nimbrel::MenuBarCompanion
