#pragma once

#include <BarcodeFormat.h>

#include <QColor>
#include <QImage>

#include <string>

namespace Nimbrel::Testing {

struct CodeLook {
  int module = 4;  ///< pixels a module, of linear codes the narrowest bar
  QColor dark = Qt::black;
  QColor light = Qt::white;
  int quietModules = 4;
  int errorCorrection = -1;  ///< 0 to 8, of those kinds that let one choose
};

/// A code with the quiet zone around it. Linear codes are 25 modules high. The text must suit the kind of code; Micro
/// QR and a few others cannot be drawn.
[[nodiscard]] QImage codePicture(ZXing::BarcodeFormat format, const std::string& text, const CodeLook& look = {});

/// A page in RGB32 of one colour with the picture in its middle.
[[nodiscard]] QImage onPage(const QImage& picture, QSize size, QColor colour = Qt::white);

}  // namespace Nimbrel::Testing
