#pragma once

#include "Views/Panels/QuickLookPanel.h"

namespace Nimbrel {

class Store;

/// Shows the selected shots in the panel, or all that the gallery shows when none is selected, from the first that is
/// selected, once they may be seen. A panel that shows just these closes. The panel may go meanwhile.
void quickLook(Store& store, QuickLookPanel& panel);

/// The panel that closes and forgets what it showed when everything sensitive is protected again, or one of its shots
/// turns out to be sensitive. It belongs to `parent`, which the store must outlive.
[[nodiscard]] QuickLookPanel* makeQuickLookPanel(const Store& store, QWidget* parent);

}  // namespace Nimbrel
