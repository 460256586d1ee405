#pragma once

#include "Store/HeicEncodings.h"

#include <QImage>
#include <QSizeF>

#include <string>
#include <vector>

namespace Nimbrel {

/// A picture for the canvas: at its full size, and halved again and again, so that it is painted fast and smoothly at
/// any zoom. A value; copies share their pixels.
struct EditorPicture {
  std::vector<QImage> levels;  ///< the largest first; empty when the file could not be read
  QImage blurred;              ///< all of it, as small as makes it look blurred when it is enlarged
  FileState file;              ///< as it was before it was read

  [[nodiscard]] bool isNull() const { return levels.empty(); }
  /// In pixels, upright; empty without a picture.
  [[nodiscard]] QSizeF size() const { return isNull() ? QSizeF() : QSizeF(levels.front().size()); }
  /// The smallest level that has at least so many pixels in a row; else the full size. Not without a picture.
  [[nodiscard]] const QImage& level(double width) const;
};

/// Decodes the first picture of a file. Without levels when it cannot be read, or is larger than Flatten takes. Any
/// thread; takes as long as decoding does.
[[nodiscard]] EditorPicture loadEditorPicture(const std::string& path);

}  // namespace Nimbrel
