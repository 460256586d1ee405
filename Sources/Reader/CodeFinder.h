#pragma once

#include <QImage>
#include <QRect>

#include <string>
#include <vector>

namespace Nimbrel::Reader {

struct FoundCode {
  std::string payload;  ///< UTF-8; empty for a code that holds no text
  QRect box;            ///< in pixels of the picture
};

/// The QR codes, bar codes and their like in an upright, opaque picture in RGB32, dark on light or light on dark.
[[nodiscard]] std::vector<FoundCode> findCodes(const QImage& picture);

}  // namespace Nimbrel::Reader
