// Pictures at their full size. How each kind is decoded is tested in ImageDecodingTest.cpp, on smaller copies.

#include "PictureFiles.h"
#include "Platform/ImageFile.h"
#include "Support/Pictures.h"
#include "Support/TemporaryFolder.h"

#include <QTransform>

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace Nimbrel {
namespace {

using namespace Testing;

/// The largest difference of a channel between two pictures of one size.
int difference(const QImage& one, const QImage& other) {
  if (one.size() != other.size()) return 256;
  int most = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      const auto a = one.pixel(x, y);
      const auto b = other.pixel(x, y);
      for (const int shift : {0, 8, 16, 24}) {
        most = std::max(most, std::abs(static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF)));
      }
    }
  }
  return most;
}

TEST(WholePicture, HasEveryPixelOfTheFile) {
  const TemporaryFolder folder;
  const auto image = picture(1501, 997, 3);
  for (const auto* name : {"a.png", "a.tiff"}) {
    writePicture(image, folder.path(name));
    const auto whole = ImageFile::picture(folder.path(name));
    EXPECT_EQ(whole.format(), QImage::Format_RGB32) << name;
    EXPECT_EQ(difference(whole, image), 0) << name;
  }
  writePng(folder.path("interlaced.png"), {.width = 1501, .height = 997, .interlaced = true}, rowsOf(image));
  EXPECT_EQ(difference(ImageFile::picture(folder.path("interlaced.png")), image), 0);
}

TEST(WholePicture, IsUpright) {
  const TemporaryFolder folder;
  const auto image = picture(60, 40, 3);
  writePng(folder.path("turned.png"), {.width = 60, .height = 40, .exif = exifWithOrientation(6)}, rowsOf(image));
  const auto whole = ImageFile::picture(folder.path("turned.png"));
  EXPECT_EQ(difference(whole, image.transformed(QTransform().rotate(90))), 0);
}

TEST(WholePicture, KeepsWhatIsTransparent) {
  const TemporaryFolder folder;
  QImage image(50, 40, QImage::Format_ARGB32);
  image.fill(QColor(200, 100, 50, 128));
  writePicture(image, folder.path("half.png"));
  const auto whole = ImageFile::picture(folder.path("half.png"));
  EXPECT_EQ(whole.format(), QImage::Format_ARGB32_Premultiplied);
  EXPECT_EQ(qAlpha(whole.pixel(10, 10)), 128);
}

TEST(WholePicture, IsReadFromInkAndFromSixteenBits) {
  const TemporaryFolder folder;
  QImage image(80, 60, QImage::Format_RGB32);
  image.fill(QColor(150, 90, 40));
  writeJpeg(folder.path("ink.jpg"), image, {.colours = JCS_CMYK});
  EXPECT_LE(difference(ImageFile::picture(folder.path("ink.jpg")), image), 6);
  writePng(folder.path("deep.png"), {.width = 80, .height = 60, .bitDepth = 16}, [](int, std::vector<png_byte>& row) {
    for (std::size_t i = 0; i < row.size(); i += 6) {
      row[i] = 150;
      row[i + 2] = 90;
      row[i + 4] = 40;
    }
  });
  EXPECT_LE(difference(ImageFile::picture(folder.path("deep.png")), image), 1);
}

TEST(WholePicture, IsTheFirstOfAnAnimation) {
  const TemporaryFolder folder;
  const std::vector<std::uint8_t> first(20 * 10, 0);
  const std::vector<std::uint8_t> second(20 * 10, 1);
  const auto path = folder.write("two.gif", gif(20, 10, {qRgb(9, 99, 199), qRgb(250, 0, 0)}, {first, second}));
  const auto whole = ImageFile::picture(path);
  ASSERT_EQ(whole.size(), QSize(20, 10));
  EXPECT_EQ(whole.pixel(5, 5), qRgb(9, 99, 199));
}

TEST(WholePicture, MayBeVeryLong) {
  const TemporaryFolder folder;
  for (const QSize size : {QSize(20000, 200), QSize(200, 20000)}) {
    const auto image = picture(size.width(), size.height(), 1);
    writePicture(image, folder.path("long.png"));
    EXPECT_EQ(difference(ImageFile::picture(folder.path("long.png")), image), 0);
  }
}

TEST(WholePicture, IsNoneWhenItIsTooLargeOrDamaged) {
  const TemporaryFolder folder;
  // Ten thousand rows of eight thousand grey pixels are a small file and 320 MB in memory.
  writePng(folder.path("huge.png"), {.width = 8000, .height = 10000, .colourType = PNG_COLOR_TYPE_GRAY},
           [](int, std::vector<png_byte>& row) { row[0] = 7; });
  EXPECT_TRUE(ImageFile::picture(folder.path("huge.png")).isNull());
  writePicture(picture(300, 200, 1), folder.path("whole.png"));
  const auto bytes = contentOf(folder.path("whole.png"));
  EXPECT_TRUE(ImageFile::picture(folder.write("half.png", bytes.substr(0, bytes.size() / 2))).isNull());
  EXPECT_TRUE(ImageFile::picture(folder.write("text.png", "no picture")).isNull());
  EXPECT_TRUE(ImageFile::picture(folder.path("missing.png")).isNull());
  EXPECT_TRUE(ImageFile::picture(folder.path()).isNull());
}

}  // namespace
}  // namespace Nimbrel
