#include "Views/Editor/EditorPicture.h"

#include "Editing/PixelSpace.h"
#include "Platform/ImageFile.h"

#include <algorithm>
#include <cstdint>

namespace Nimbrel {

namespace {

/// Below this many pixels nothing is gained by a smaller level.
constexpr int smallestLevel = 512;
constexpr std::int64_t mostBytes = 256 * 1024 * 1024;

std::vector<int> levelSides(int longerSide) {
  std::vector<int> sides{longerSide};
  while (sides.back() >= 2 * smallestLevel) sides.push_back(sides.back() / 2);
  return sides;
}

/// A pixel of it for every deviation of the blur.
QImage blurredLook(const QImage& level, QSize pixels) {
  const auto deviation = Flatten::MarkSizes(pixels).blurRadius;
  const auto length = [deviation](int pixelCount) { return std::max(1, static_cast<int>(pixelCount / deviation)); };
  return level.scaled(length(pixels.width()), length(pixels.height()), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

const QImage& EditorPicture::level(double width) const {
  const auto* smallest = &levels.front();
  for (const auto& image : levels) {
    if (image.width() < width) break;
    smallest = &image;
  }
  return *smallest;
}

EditorPicture loadEditorPicture(const std::string& path) {
  EditorPicture picture;
  // Before, so that a change that comes while it is read counts as one.
  picture.file = stateOfFile(path);
  const auto size = ImageFile::pixelSize(path);
  const auto longerSide = std::max(size.width, size.height);
  if (longerSide < 1 || std::int64_t{4} * size.width * size.height > mostBytes) return picture;
  picture.levels = ImageFile::thumbnails(path, levelSides(longerSide));
  if (picture.isNull()) return picture;
  picture.blurred = blurredLook(picture.levels.back(), picture.levels.front().size());
  return picture;
}

}  // namespace Nimbrel
