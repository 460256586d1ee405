#include "Support/CodePictures.h"

#include <BitMatrix.h>
#include <CharacterSet.h>
#include <MultiFormatWriter.h>

#include <QPainter>
#include <QString>

namespace Nimbrel::Testing {

namespace {

constexpr int linearHeight = 25;

bool isLinear(ZXing::BarcodeFormat format) {
  return ZXing::BarcodeFormats(ZXing::BarcodeFormat::LinearCodes).testFlag(format);
}

/// One bit for each module: asked for no size, the writer gives that.
ZXing::BitMatrix modulesOf(ZXing::BarcodeFormat format, const std::string& text, int errorCorrection) {
  ZXing::MultiFormatWriter writer(format);
  writer.setMargin(0).setEncoding(ZXing::CharacterSet::UTF8).setEccLevel(errorCorrection);
  return writer.encode(QString::fromStdString(text).toStdWString(), 0, 0);
}

}  // namespace

QImage codePicture(ZXing::BarcodeFormat format, const std::string& text, const CodeLook& look) {
  const auto modules = modulesOf(format, text, look.errorCorrection);
  const int rowHeight = isLinear(format) ? linearHeight * look.module : look.module;
  const int quiet = look.quietModules * look.module;
  const QSize inner(modules.width() * look.module, modules.height() * rowHeight);
  QImage image(inner.grownBy({quiet, quiet, quiet, quiet}), QImage::Format_RGB32);
  image.fill(look.light);
  QPainter painter(&image);
  for (int y = 0; y < modules.height(); ++y) {
    for (int x = 0; x < modules.width(); ++x) {
      if (!modules.get(x, y)) continue;
      painter.fillRect(quiet + x * look.module, quiet + y * rowHeight, look.module, rowHeight, look.dark);
    }
  }
  return image;
}

QImage onPage(const QImage& picture, QSize size, QColor colour) {
  QImage page(size, QImage::Format_RGB32);
  page.fill(colour);
  QPainter painter(&page);
  painter.drawImage((size.width() - picture.width()) / 2, (size.height() - picture.height()) / 2, picture);
  return page;
}

}  // namespace Nimbrel::Testing
