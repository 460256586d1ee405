#pragma once

#include <QImage>
#include <QRgb>

#include <algorithm>
#include <cstdlib>

namespace Nimbrel::Reader {

/// A row of a picture in RGB32, without a copy of its own.
[[nodiscard]] inline const QRgb* pixels(const QImage& picture, int y) {
  return reinterpret_cast<const QRgb*>(picture.constScanLine(y));
}

/// How far apart two colours are in the channel where they differ most: coloured text may have no contrast in grey.
[[nodiscard]] inline int colourDistance(QRgb one, QRgb other) {
  return std::max(
      {std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)), std::abs(qBlue(one) - qBlue(other))});
}

}  // namespace Nimbrel::Reader
