#pragma once

#include "Store/Store.h"

#include <QWidget>

namespace Nimbrel {

/// Lets the user choose images, several at once, and imports them. Comes back at once; the panel is a sheet of the
/// window, which must outlive it, as the Store must. Main thread.
void openImportPanel(Store& store, QWidget& window);

}  // namespace Nimbrel
