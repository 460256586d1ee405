#pragma once

#include <QIcon>

namespace Nimbrel {

/// What stands for us in a tray: the desktop's own icon of ours where there is one, which it colours for its panels;
/// else the symbol on a plate, which is seen on light panels as on dark ones. In the colours of the moment. Needs a
/// QGuiApplication.
[[nodiscard]] QIcon trayPicture();

}  // namespace Nimbrel
