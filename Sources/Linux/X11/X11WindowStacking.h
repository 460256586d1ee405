#pragma once

#include "Linux/X11/XcbConnection.h"
#include "Platform/WindowStacking.h"

#include <memory>

namespace Nimbrel {

/// For windows that Qt shows on an X11 screen. Needs a QGuiApplication.
[[nodiscard]] std::unique_ptr<WindowStacking> makeX11WindowStacking(std::shared_ptr<XcbConnection> connection);

}  // namespace Nimbrel
