#pragma once

#include "Linux/X11/XcbConnection.h"
#include "Platform/WindowActivation.h"

#include <memory>

namespace Nimbrel {

/// For windows that Qt shows on an X11 screen. Needs a QGuiApplication.
[[nodiscard]] std::unique_ptr<WindowActivation> makeX11WindowActivation(std::shared_ptr<XcbConnection> connection);

}  // namespace Nimbrel
