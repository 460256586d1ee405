#pragma once

#include "Linux/X11/XcbConnection.h"
#include "Platform/Pasteboard.h"

#include <memory>

namespace Nimbrel {

/// The clipboard of the session that the windows are in. Needs a QGuiApplication, which outlives it. `x11` is a way to
/// that session's X server; null where it has none.
[[nodiscard]] std::unique_ptr<Pasteboard> makeQtPasteboard(std::shared_ptr<XcbConnection> x11);

}  // namespace Nimbrel
