#include "Platform/ImageFile.h"

#include "Linux/Images/AreaReducer.h"
#include "Linux/Images/HeaderSize.h"
#include "Linux/Images/HeifDecoder.h"
#include "Linux/Images/JpegDecoder.h"
#include "Linux/Images/PictureSource.h"
#include "Linux/Images/PngDecoder.h"
#include "Linux/Images/QtDecoder.h"

#include <new>

namespace Nimbrel::ImageFile {

using namespace Images;

namespace {

QImage decode(const std::string& path, int longerSide) {
  const auto file = openPicture(path);
  if (!file) return {};
  switch (pictureKind(file.get())) {
    case PictureKind::Png:
      return decodePng(file.get(), longerSide);
    case PictureKind::Jpeg:
      return decodeJpeg(file.get(), longerSide);
    case PictureKind::Heif:
      return decodeHeif(path, longerSide);
    case PictureKind::Gif:
      return hasWholeGifFrame(file.get()) ? decodeWithQt(file.get(), longerSide) : QImage();
    case PictureKind::Tiff:
    case PictureKind::WebP:
      return decodeWithQt(file.get(), longerSide);
    case PictureKind::None:
      break;
  }
  return {};
}

std::vector<QImage> inSizes(const std::string& path, std::span<const int> longerSides) {
  std::vector<QImage> images;
  for (const int longerSide : longerSides) {
    if (longerSide < 1) return {};
    if (images.empty()) {
      images.push_back(decode(path, longerSide));
    } else {
      const auto& former = images.back();
      images.push_back(reduced(former, fittedSize({.width = former.width(), .height = former.height()}, longerSide)));
    }
    if (images.back().isNull()) return {};
  }
  return images;
}

}  // namespace

PixelSize pixelSize(const std::string& path) {
  const auto file = openPicture(path);
  if (!file) return {};
  switch (pictureKind(file.get())) {
    case PictureKind::Png:
      return pngSize(file.get());
    case PictureKind::Jpeg:
      return jpegSize(file.get());
    case PictureKind::Heif:
      return heifSize(path);
    case PictureKind::Gif:
      return gifSize(file.get());
    case PictureKind::Tiff:
    case PictureKind::WebP:
      return qtSize(file.get());
    case PictureKind::None:
      break;
  }
  return {};
}

std::vector<QImage> thumbnails(const std::string& path, std::span<const int> longerSides) {
  try {
    return inSizes(path, longerSides);
  } catch (const std::bad_alloc&) {
    return {};
  }
}

}  // namespace Nimbrel::ImageFile
