#pragma once

#include "Model/Models.h"
#include "Store/Store.h"
#include "Views/Gallery/GalleryActions.h"

#include <QMenu>

namespace Nimbrel {

/// Fills a menu with what can be done with a shot of the gallery; some of it is done with all `targets`, which hold the
/// shot. The store and the actions must outlive the menu, the shots may go from the catalogue while it is open.
void fillCellMenu(QMenu& menu, const ShotPtr& shot, const ShotList& targets, Store& store, GalleryActions& actions);

}  // namespace Nimbrel
