#pragma once

class QWindow;

namespace Nimbrel::Screencapture {

/// Whether windows can be seen through, so that they may have corners that are round.
[[nodiscard]] bool isDesktopComposited();

/// Asks the window manager of an X11 screen to show a window on every workspace; others are not asked. The window must
/// not be shown yet.
void keepOnAllWorkspaces(QWindow& window);

}  // namespace Nimbrel::Screencapture
