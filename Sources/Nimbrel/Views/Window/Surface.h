#pragma once

#include "Views/Shared/Theme.h"

#include <QWidget>

namespace Nimbrel {

/// Lays a widget, and what it shows its rows on, out on the colour of a token, also when the theme changes.
void setSurface(QWidget& widget, Token token);

}  // namespace Nimbrel
