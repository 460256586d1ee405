#include "Views/Gallery/CompactImage.h"

#include <QBuffer>
#include <QImageWriter>

namespace Nimbrel {

namespace {

constexpr int jpegQuality = 92;
constexpr int quickPngQuality = 80;  // the first level of compression; 90 would be none

}  // namespace

CompactImage::CompactImage(const QImage& image) {
  if (image.isNull()) return;
  const bool isOpaque = !image.hasAlphaChannel();
  QBuffer buffer(&bytes_);
  QImageWriter writer(&buffer, isOpaque ? "jpeg" : "png");
  writer.setQuality(isOpaque ? jpegQuality : quickPngQuality);
  if (!writer.write(image)) bytes_ = {};
}

QImage CompactImage::image() const { return isNull() ? QImage() : QImage::fromData(bytes_); }

}  // namespace Nimbrel
