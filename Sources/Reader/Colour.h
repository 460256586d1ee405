#pragma once

#include <QRgb>

#include <algorithm>
#include <cstdlib>

namespace Nimbrel::Reader {

/// How far apart two colours are in the channel where they differ most: coloured text may have no contrast in grey.
[[nodiscard]] inline int colourDistance(QRgb one, QRgb other) {
  return std::max(
      {std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)), std::abs(qBlue(one) - qBlue(other))});
}

}  // namespace Nimbrel::Reader
