#include "Platform/ImageFile.h"

#include "Linux/Images/AreaReducer.h"
#include "Linux/Images/HeaderSize.h"
#include "Linux/Images/HeifDecoder.h"
#include "Linux/Images/JpegDecoder.h"
#include "Linux/Images/PictureSource.h"
#include "Linux/Images/PngDecoder.h"
#include "Linux/Images/QtDecoder.h"

#include <cstdio>
#include <limits>
#include <new>

namespace Nimbrel::ImageFile {

using namespace Images;

namespace {

QImage decode(std::FILE* file, const std::string& path, int longerSide) {
  switch (pictureKind(file)) {
    case PictureKind::Png:
      return decodePng(file, longerSide);
    case PictureKind::Jpeg:
      return decodeJpeg(file, longerSide);
    case PictureKind::Heif:
      return decodeHeif(path, longerSide);
    case PictureKind::Gif:
      return hasWholeGifFrame(file) ? decodeWithQt(file, longerSide) : QImage();
    case PictureKind::Tiff:
    case PictureKind::WebP:
      return decodeWithQt(file, longerSide);
    case PictureKind::None:
      break;
  }
  return {};
}

QImage decode(const std::string& path, int longerSide) {
  const auto file = openPicture(path);
  return file ? decode(file.get(), path, longerSide) : QImage();
}

PixelSize sizeOf(std::FILE* file, const std::string& path) {
  switch (pictureKind(file)) {
    case PictureKind::Png:
      return pngSize(file);
    case PictureKind::Jpeg:
      return jpegSize(file);
    case PictureKind::Heif:
      return heifSize(path);
    case PictureKind::Gif:
      return gifSize(file);
    case PictureKind::Tiff:
    case PictureKind::WebP:
      return qtSize(file);
    case PictureKind::None:
      break;
  }
  return {};
}

QImage whole(const std::string& path) {
  const auto file = openPicture(path);
  if (!file || !fitsInMemory(sizeOf(file.get(), path))) return {};
  return decode(file.get(), path, std::numeric_limits<int>::max());
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
  return file ? sizeOf(file.get(), path) : PixelSize{};
}

std::vector<QImage> thumbnails(const std::string& path, std::span<const int> longerSides) {
  try {
    return inSizes(path, longerSides);
  } catch (const std::bad_alloc&) {
    return {};
  }
}

QImage picture(const std::string& path) {
  try {
    return whole(path);
  } catch (const std::bad_alloc&) {
    return {};
  }
}

}  // namespace Nimbrel::ImageFile
