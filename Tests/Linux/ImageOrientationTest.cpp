#include "PictureFiles.h"
#include "Platform/ImageFile.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QPainter>

#include <array>
#include <string>

namespace Nimbrel::ImageFile {
namespace {

using namespace Testing;

QImage thumbnail(const std::string& path, int longerSide) {
  const auto images = thumbnails(path, std::array{longerSide});
  return images.empty() ? QImage() : images.front();
}

/// Four different quarters, so that each way of turning and mirroring looks different.
QImage quarters() {
  QImage image(64, 32, QImage::Format_RGB32);
  QPainter painter(&image);
  painter.fillRect(0, 0, 32, 16, QColor(200, 30, 30));
  painter.fillRect(32, 0, 32, 16, QColor(30, 180, 30));
  painter.fillRect(0, 16, 32, 16, QColor(30, 30, 190));
  painter.fillRect(32, 16, 32, 16, QColor(180, 180, 40));
  return image;
}

/// The colours of the quarters, from the upper left on row by row, each by a letter.
std::string quartersOf(const QImage& image) {
  const auto letter = [&](int x, int y) {
    const QColor colour = image.pixelColor(image.width() * x / 4, image.height() * y / 4);
    if (colour.red() > 100 && colour.green() > 100) return 'y';
    if (colour.red() > 100) return 'r';
    return colour.green() > 100 ? 'g' : 'b';
  };
  return image.isNull() ? "" : std::string{letter(1, 1), letter(3, 1), letter(1, 3), letter(3, 3)};
}

constexpr std::array<const char*, 9> turnedQuarters{"", "rgby", "gryb", "ybgr", "byrg", "rbgy", "bryg", "ygbr", "gyrb"};

class Upright : public ::testing::TestWithParam<int> {
 protected:
  static void expectUpright(const std::string& path) {
    const auto image = thumbnail(path, 32);
    EXPECT_EQ(image.format(), QImage::Format_RGB32);
    EXPECT_EQ(image.size(), GetParam() < 5 ? QSize(32, 16) : QSize(16, 32));
    EXPECT_EQ(quartersOf(image), turnedQuarters.at(static_cast<std::size_t>(GetParam())));
  }

  const TemporaryFolder folder_;
};

TEST_P(Upright, IsTheThumbnailOfAJpeg) {
  writeJpeg(folder_.path("a.jpg"), quarters(), {.exif = exifWithOrientation(GetParam())});
  expectUpright(folder_.path("a.jpg"));
}

TEST_P(Upright, IsTheThumbnailOfAPngWhereverTheOrientationStands) {
  const auto exif = exifWithOrientation(GetParam());
  writePng(folder_.path("a.png"), {.width = 64, .height = 32, .exif = exif}, rowsOf(quarters()));
  expectUpright(folder_.path("a.png"));
  writePng(folder_.path("b.png"), {.width = 64, .height = 32, .exifAtEnd = exif}, rowsOf(quarters()));
  expectUpright(folder_.path("b.png"));
}

TEST_P(Upright, IsTheThumbnailOfATiff) {
  folder_.write("a.tiff", tiff(quarters(), GetParam()));
  expectUpright(folder_.path("a.tiff"));
  EXPECT_EQ(pixelSize(folder_.path("a.tiff")), (PixelSize{64, 32}));
}

TEST_P(Upright, IsTheThumbnailOfAHeic) {
  writeHeic(folder_.path("a.heic"), quarters(), GetParam());
  expectUpright(folder_.path("a.heic"));
}

INSTANTIATE_TEST_SUITE_P(All, Upright, ::testing::Range(1, 9));

TEST(Orientation, IsIgnoredWhenItMakesNoSense) {
  const TemporaryFolder folder;
  for (const auto& exif :
       {exifWithOrientation(0), exifWithOrientation(9), QByteArray("II*\0", 4), QByteArray(40, '\xFF')}) {
    writeJpeg(folder.path("a.jpg"), quarters(), {.exif = exif});
    EXPECT_EQ(quartersOf(thumbnail(folder.path("a.jpg"), 64)), "rgby") << exif.size();
  }
}

}  // namespace
}  // namespace Nimbrel::ImageFile
