#pragma once

#include <QImage>
#include <QRect>

#include <cstddef>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// An image of a GIF as it is stored.
struct StoredGifImage {
  QRect place;
  int delay = 0;  ///< hundredths of a second
  int disposal = 0;
  int transparent = -1;
  int ownColours = 0;  ///< length of its own table; 0 without one
  QImage shown;        ///< what a viewer shows then
};

struct StoredGif {
  QSize size;
  int colours = 0;  ///< length of the table of the file
  bool loopsForEver = false;
  std::vector<StoredGifImage> images;

  [[nodiscard]] std::vector<int> delays() const;
};

/// Reads a GIF with giflib; fails the test when that cannot be done.
[[nodiscard]] StoredGif readGif(const std::string& path);

}  // namespace Nimbrel::Testing
