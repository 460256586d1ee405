#pragma once

#include "Linux/X11/XcbConnection.h"
#include "Platform/FrontApplication.h"

#include <memory>
#include <string>

namespace Nimbrel {

/// Asks the window manager which window is active, and finds the application behind it. Windows of our own processes
/// are told under `ownIdentifier`.
[[nodiscard]] std::unique_ptr<FrontApplication> makeX11FrontApplication(std::shared_ptr<XcbConnection> connection,
                                                                        std::string ownIdentifier);

}  // namespace Nimbrel
