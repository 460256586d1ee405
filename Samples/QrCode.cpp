#include "Samples/QrCode.h"

#include <BarcodeFormat.h>
#include <BitMatrix.h>
#include <MultiFormatWriter.h>

#include <cmath>

namespace Nimbrel::Samples {

void drawQrCode(Canvas& canvas, const QRectF& box, QStringView payload) {
  constexpr int quietModules = 4;
  ZXing::MultiFormatWriter writer(ZXing::BarcodeFormat::QRCode);
  // Asked for no size, the writer gives one bit for each module.
  const auto modules = writer.setMargin(quietModules).encode(payload.toString().toStdWString(), 0, 0);
  const auto module = std::floor(box.width() / modules.width());
  const auto inset = std::floor((box.width() - module * modules.width()) / 2);
  canvas.fill(box, Qt::white);
  for (int y = 0; y < modules.height(); ++y) {
    for (int x = 0; x < modules.width(); ++x) {
      if (!modules.get(x, y)) continue;
      canvas.fill({box.left() + inset + x * module, box.top() + inset + y * module, module, module}, Qt::black);
    }
  }
}

}  // namespace Nimbrel::Samples
