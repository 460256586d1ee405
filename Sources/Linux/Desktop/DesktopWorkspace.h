#pragma once

#include "Platform/Workspace.h"

#include <memory>

namespace Nimbrel {

/// Starts what the desktop entries name for a kind of file or an address, in a sandbox through its portal, and asks the
/// file manager on the session bus. All of it waits for others, and so happens in threads of its own.
[[nodiscard]] std::unique_ptr<Workspace> makeDesktopWorkspace();

}  // namespace Nimbrel
