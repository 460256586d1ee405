#pragma once

#include "Platform/OwnerAuthentication.h"

#include <memory>
#include <string>
#include <vector>

namespace Nimbrel {

/// Asks PAM for the user whose process this is, whatever the environment says. Modules may take their time, so that
/// each authentication has a thread of its own; destruction does not wait for it.
[[nodiscard]] std::unique_ptr<OwnerAuthentication> makePamOwnerAuthentication();

/// Where the system keeps the files of services.
[[nodiscard]] const std::vector<std::string>& pamFolders();

/// The service to go by: our own where one of the folders has a file for it, else that of a login.
[[nodiscard]] std::string pamService(const std::vector<std::string>& folders);

}  // namespace Nimbrel
