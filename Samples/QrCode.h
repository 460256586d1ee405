#pragma once

#include "Samples/Canvas.h"

namespace Nimbrel::Samples {

/// Draws a QR code with whole points for its modules into the middle of the box, on white with the quiet margin that
/// readers want.
void drawQrCode(Canvas& canvas, const QRectF& box, QStringView payload);

}  // namespace Nimbrel::Samples
