#pragma once

#include "Samples/Canvas.h"

#include <QStringList>

namespace Nimbrel::Samples {

/// Lines as a terminal shows them. "^" and a letter change the ink for the rest of the line: t text, m muted, g green,
/// r red, y yellow, b blue. A block stands for the cursor behind the last line.
void drawTerminal(Canvas& canvas, QStringView title, const QStringList& lines);

}  // namespace Nimbrel::Samples
