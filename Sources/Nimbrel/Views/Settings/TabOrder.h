#pragma once

#include <QWidget>

namespace Nimbrel {

/// Lets Tab go through the controls below a widget in the order in which their layouts hold them, those in scroll areas
/// as well: widgets that were made later than their neighbours come last by themselves.
void orderTabsByLayout(QWidget& root);

}  // namespace Nimbrel
