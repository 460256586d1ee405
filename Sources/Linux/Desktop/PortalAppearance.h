#pragma once

#include "Platform/DesktopAppearance.h"

#include <memory>

namespace Nimbrel {

/// Asks the settings portal of the desktop (org.freedesktop.portal.Settings, namespace org.freedesktop.appearance) over
/// a session bus connection of its own. Nothing is opened or asked before the first observe(), so that programs without
/// windows pay nothing. Where there is no bus or no such portal nothing is ever told.
[[nodiscard]] std::unique_ptr<DesktopAppearance> makePortalAppearance();

}  // namespace Nimbrel
