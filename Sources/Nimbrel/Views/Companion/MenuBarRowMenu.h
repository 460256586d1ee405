#pragma once

#include "Store/Store.h"
#include "Views/Gallery/GalleryActions.h"

#include <QPoint>
#include <QWidget>

namespace Nimbrel {

/// Opens the menu of a shot in the panel of the menu bar, at a place on the screen. It deletes itself when it has
/// closed. Store and actions must outlive it; the shot may go from the catalogue while it is open.
void showMenuBarRowMenu(const ShotPtr& shot, Store& store, GalleryActions& actions, QWidget& row, QPoint place);

}  // namespace Nimbrel
