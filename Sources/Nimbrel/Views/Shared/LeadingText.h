#pragma once

#include <QLabel>

namespace Nimbrel {

/// Lets the text of a label stand where the layout of its window begins, or at its end with Qt::AlignRight: by itself a
/// label goes by the script of its text.
void alignToLayout(QLabel& label, Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter);

}  // namespace Nimbrel
