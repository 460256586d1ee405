#pragma once

#include "Model/Models.h"
#include "Store/Store.h"
#include "Views/Shared/AppIcons.h"

#include <QIcon>
#include <QString>

namespace Nimbrel {

/// What the cell of a shot says. A protected shot gives away neither its name nor where it comes from. A plain value.
struct CellContent {
  QString title;   ///< on one line
  QString source;  ///< the application, or the time where none is known, or that the shot is locked
  QIcon icon;      ///< of the application; null where `symbol` stands for it
  QString symbol;
  bool isProtected = false;
  bool isInInbox = false;
  bool isFavorite = false;
};

/// What the cell of that shot says now. Main thread.
[[nodiscard]] CellContent cellContent(const Store& store, const Shot& shot, AppIcons& icons);

/// The same as assistive technology reads it.
[[nodiscard]] QString spokenName(const CellContent& content);

/// The name of a shot, or that it must not be shown, in a word, under the small cells of the filmstrip.
[[nodiscard]] QString shortTitle(const Store& store, const Shot& shot);

}  // namespace Nimbrel
