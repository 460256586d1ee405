#pragma once

#include "Store/Store.h"
#include "Views/Gallery/GalleryActions.h"

#include <QKeyEvent>

namespace Nimbrel {

/// What the keys do in both layouts of the gallery: Delete, the arrows, Space and Return.
enum class KeyOutcome {
  NotOurs,  ///< the key is to go on to whoever else wants it
  Moved,    ///< the selection may be another
  Done,
};
[[nodiscard]] KeyOutcome handleGalleryKey(const QKeyEvent& event, Qt::LayoutDirection direction, Store& store,
                                          GalleryActions& actions);

}  // namespace Nimbrel
