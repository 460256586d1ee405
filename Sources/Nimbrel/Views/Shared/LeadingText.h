#pragma once

#include <QLabel>

namespace Nimbrel {

/// Lets the text of a label stand where the layout of its window begins: by itself a label lets each text stand where
/// the script of that text begins.
void alignToLayout(QLabel& label);

}  // namespace Nimbrel
