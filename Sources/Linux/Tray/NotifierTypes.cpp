#include "Linux/Tray/NotifierTypes.h"

#include <QDBusMetaType>
#include <QImage>
#include <QPixmap>
#include <QtEndian>

#include <array>
#include <utility>

namespace Nimbrel {

namespace {

/// Those of panels at the usual scales, in pixels.
constexpr std::array sides{16, 22, 24, 32, 44, 48, 64};

NotifierPicture pictureOf(const QIcon& icon, int side) {
  const auto image = icon.pixmap(QSize(side, side), 1.0).toImage().convertToFormat(QImage::Format_ARGB32);
  NotifierPicture picture{.width = image.width(), .height = image.height()};
  for (int y = 0; y < image.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      const auto pixel = qToBigEndian(line[x]);
      picture.bytes.append(reinterpret_cast<const char*>(&pixel), sizeof pixel);
    }
  }
  return picture;
}

}  // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierPicture& picture) {
  argument.beginStructure();
  argument << picture.width << picture.height << picture.bytes;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierPicture& picture) {
  argument.beginStructure();
  argument >> picture.width >> picture.height >> picture.bytes;
  argument.endStructure();
  return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& tip) {
  argument.beginStructure();
  argument << tip.iconName << tip.pictures << tip.title << tip.text;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& tip) {
  argument.beginStructure();
  argument >> tip.iconName >> tip.pictures >> tip.title >> tip.text;
  argument.endStructure();
  return argument;
}

void registerNotifierTypes() {
  qDBusRegisterMetaType<NotifierPicture>();
  qDBusRegisterMetaType<NotifierPictures>();
  qDBusRegisterMetaType<NotifierToolTip>();
}

NotifierPictures notifierPictures(const QIcon& icon) {
  NotifierPictures pictures;
  for (const int side : sides) {
    if (auto picture = pictureOf(icon, side); picture.width > 0) pictures.append(std::move(picture));
  }
  return pictures;
}

}  // namespace Nimbrel
