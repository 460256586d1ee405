#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace Nimbrel {
namespace {

/// The drawing at a size, which is kept for people to look at.
QImage draw(const QString& file, int size) {
  QSvgRenderer drawing(QStringLiteral(NIMBREL_RESOURCES "/icons/") + file);
  EXPECT_TRUE(drawing.isValid()) << file.toStdString();
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  drawing.render(&painter);
  painter.end();
  const QDir folder(QStringLiteral(NIMBREL_PICTURES));
  folder.mkpath(QStringLiteral("."));
  const auto name = QStringLiteral("icon-%1-%2.png").arg(QFileInfo(file).completeBaseName()).arg(size);
  EXPECT_TRUE(image.save(folder.filePath(name)));
  return image;
}

/// The share of the pixels that something stands on.
double coverage(const QImage& image) {
  int covered = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) covered += image.pixelColor(x, y).alpha() > 127 ? 1 : 0;
  }
  return static_cast<double>(covered) / (image.width() * image.height());
}

TEST(Icon, IsDrawnAtTheSizesOfLaunchers) {
  for (const int size : {16, 24, 32, 48, 64, 128, 256, 512}) {
    const auto image = draw(QStringLiteral("scalable/com.halderquist.nimbrel.svg"), size);
    EXPECT_GT(coverage(image), 0.4) << size;
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << "the corners are free";
  }
}

TEST(Icon, TheSymbolicOneHasOneColourForTheDesktopToReplace) {
  for (const int size : {16, 22, 48}) {
    const auto image = draw(QStringLiteral("symbolic/com.halderquist.nimbrel-symbolic.svg"), size);
    EXPECT_GT(coverage(image), 0.3) << size;
    EXPECT_LT(coverage(image), 0.9) << size;
    for (int y = 0; y < size; ++y) {
      for (int x = 0; x < size; ++x) {
        const auto colour = image.pixelColor(x, y);
        EXPECT_TRUE(colour.alpha() < 255 || colour.name() == QLatin1String("#2e3436")) << x << ", " << y;
      }
    }
  }
}

}  // namespace
}  // namespace Nimbrel
