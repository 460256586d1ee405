// What thumbnails look like when they are upright. Their sizes, and files that are no pictures, are tested in
// ImageFileTest.cpp, orientation in ImageOrientationTest.cpp.

#include "Platform/ImageFile.h"

#include "PictureFiles.h"
#include "Support/Pictures.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QColorSpace>
#include <QImageWriter>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <string>

namespace Nimbrel::ImageFile {
namespace {

using namespace Testing;

QImage thumbnail(const std::string& path, int longerSide) {
  const auto images = thumbnails(path, std::array{longerSide});
  return images.empty() ? QImage() : images.front();
}

int difference(QRgb a, QRgb b) {
  return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b)),
                   std::abs(qAlpha(a) - qAlpha(b))});
}

/// The colour as it is without its alpha, which QImage::pixel does not give.
QRgb pixelOf(const QImage& image, int x, int y) {
  const QRgb pixel = image.pixel(x, y);
  return image.format() == QImage::Format_ARGB32_Premultiplied ? qUnpremultiply(pixel) : pixel;
}

/// The largest difference of a channel anywhere; 256 for pictures of different sizes.
int difference(const QImage& a, const QImage& b) {
  if (a.size() != b.size() || a.isNull()) return 256;
  int worst = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) worst = std::max(worst, difference(pixelOf(a, x, y), pixelOf(b, x, y)));
  }
  return worst;
}

QImage evenly(QColor colour, int width = 60, int height = 40) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(colour);
  return image;
}

TEST(Decoding, ReducesEveryKindToTheSamePicture) {
  const TemporaryFolder folder;
  const auto image = Testing::picture(400, 300, 5);
  writePicture(image, folder.path("a.png"));
  const auto expected = thumbnail(folder.path("a.png"), 100);
  EXPECT_LE(difference(expected, image.scaled(100, 75, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)), 2);

  writePicture(image, folder.path("a.tiff"));
  writePng(folder.path("interlaced.png"), {.width = 400, .height = 300, .interlaced = true}, rowsOf(image));
  for (const auto* name : {"a.tiff", "interlaced.png"}) EXPECT_EQ(thumbnail(folder.path(name), 100), expected) << name;

  writeJpeg(folder.path("a.jpg"), image);
  writeJpeg(folder.path("progressive.jpg"), image, {.progressive = true});
  writeHeic(folder.path("a.heic"), image);
  EXPECT_TRUE(image.save(QString::fromStdString(folder.path("a.webp")), "webp", 95));
  for (const auto* name : {"a.jpg", "progressive.jpg", "a.heic", "a.webp"}) {
    EXPECT_LE(difference(thumbnail(folder.path(name), 100), expected), 25) << name;
  }
}

TEST(Decoding, GivesAJpegTheSameLooksAtEveryScale) {
  const TemporaryFolder folder;
  const auto image = Testing::picture(800, 600, 8);
  writeJpeg(folder.path("a.jpg"), image);
  for (const int longer : {800, 700, 400, 330, 200, 150, 100, 64}) {
    const auto expected = image.scaled(longer, (longer * 3 + 2) / 4, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    EXPECT_LE(difference(thumbnail(folder.path("a.jpg"), longer), expected), 40) << longer;
  }
}

TEST(Decoding, UnderstandsGreyAndInkInJpeg) {
  const TemporaryFolder folder;
  const QColor colour(100, 50, 150);
  writeJpeg(folder.path("grey.jpg"), evenly(colour), {.colours = JCS_GRAYSCALE});
  EXPECT_LE(difference(pixelOf(thumbnail(folder.path("grey.jpg"), 30), 9, 9), qRgb(76, 76, 76)), 2);
  for (const auto colours : {JCS_CMYK, JCS_YCCK}) {
    writeJpeg(folder.path("ink.jpg"), evenly(colour), {.colours = colours});
    EXPECT_LE(difference(pixelOf(thumbnail(folder.path("ink.jpg"), 30), 9, 9), colour.rgb()), 3) << colours;
  }
}

TEST(Decoding, UnderstandsEveryDepthOfGreyInPng) {
  const TemporaryFolder folder;
  for (const int depth : {1, 2, 4, 8, 16}) {
    const PngSpec spec{.width = 32, .height = 8, .bitDepth = depth, .colourType = PNG_COLOR_TYPE_GRAY};
    // 0x55 is black and white by turns, a third of white, or the value itself.
    writePng(folder.path("a.png"), spec, [](int, auto& row) { std::fill(row.begin(), row.end(), png_byte{0x55}); });
    const auto image = thumbnail(folder.path("a.png"), 8);
    EXPECT_EQ(image.size(), QSize(8, 2)) << depth;
    EXPECT_LE(difference(pixelOf(image, 3, 1), depth == 1 ? qRgb(128, 128, 128) : qRgb(85, 85, 85)), 1) << depth;
  }
}

TEST(Decoding, UnderstandsSixteenBitsOfColourInPngAndTiff) {
  const TemporaryFolder folder;
  QImage image(40, 40, QImage::Format_RGBA64);
  image.fill(QColor::fromRgba64(0x1234, 0x80FF, 0xFFFF, 0xFFFF));
  for (const auto* name : {"a.png", "a.tiff"}) {
    writePicture(image, folder.path(name));
    EXPECT_LE(difference(pixelOf(thumbnail(folder.path(name), 20), 9, 9), qRgb(0x12, 0x81, 0xFF)), 1) << name;
  }
}

TEST(Decoding, UnderstandsPalettesWithAndWithoutTransparency) {
  const TemporaryFolder folder;
  PngSpec spec{.width = 16, .height = 16, .bitDepth = 2, .colourType = PNG_COLOR_TYPE_PALETTE};
  spec.palette = {{200, 0, 0}, {0, 100, 0}, {10, 20, 30}};
  // Upper half of the first colour, lower half of the second.
  const auto halves = [](int y, auto& row) { std::fill(row.begin(), row.end(), y < 8 ? png_byte{0} : png_byte{0x55}); };
  writePng(folder.path("a.png"), spec, halves);
  const auto opaque = thumbnail(folder.path("a.png"), 8);
  EXPECT_FALSE(opaque.hasAlphaChannel());
  EXPECT_EQ(pixelOf(opaque, 4, 1), qRgb(200, 0, 0));
  EXPECT_EQ(pixelOf(opaque, 4, 6), qRgb(0, 100, 0));

  spec.paletteAlpha = {0, 255};
  writePng(folder.path("b.png"), spec, halves);
  const auto transparent = thumbnail(folder.path("b.png"), 8);
  EXPECT_EQ(qAlpha(pixelOf(transparent, 4, 1)), 0);
  EXPECT_EQ(pixelOf(transparent, 4, 6), qRgba(0, 100, 0, 255));
}

TEST(Decoding, UnderstandsASingleTransparentColour) {
  const TemporaryFolder folder;
  PngSpec spec{.width = 8, .height = 8, .colourType = PNG_COLOR_TYPE_GRAY};
  spec.transparent = png_color_16{.index = 0, .red = 0, .green = 0, .blue = 0, .gray = 50};
  const auto halves = [](int y, auto& row) { std::fill(row.begin(), row.end(), y < 4 ? png_byte{50} : png_byte{90}); };
  writePng(folder.path("a.png"), spec, halves);
  const auto image = thumbnail(folder.path("a.png"), 4);
  EXPECT_EQ(qAlpha(pixelOf(image, 1, 0)), 0);
  EXPECT_EQ(pixelOf(image, 1, 3), qRgba(90, 90, 90, 255));
}

TEST(Decoding, LetsTransparentPixelsCountForNothing) {
  const TemporaryFolder folder;
  // Opaque red beside green that is not to be seen.
  QImage image(40, 40, QImage::Format_ARGB32);
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 40; ++x) image.setPixel(x, y, x % 2 == 0 ? qRgba(200, 0, 0, 255) : qRgba(0, 250, 0, 0));
  }
  for (const auto* name : {"a.png", "a.tiff"}) {
    writePicture(image, folder.path(name));
    const auto reduced = thumbnail(folder.path(name), 20);
    EXPECT_EQ(reduced.format(), QImage::Format_ARGB32_Premultiplied) << name;
    EXPECT_LE(difference(pixelOf(reduced, 9, 9), qRgba(200, 0, 0, 128)), 2) << name;
  }
  EXPECT_LE(
      difference(pixelOf(thumbnails(folder.path("a.png"), std::array{20, 10}).at(1), 4, 4), qRgba(200, 0, 0, 128)), 2);

  image.fill(QColor(200, 100, 50, 128));
  writeHeic(folder.path("a.heic"), image);
  EXPECT_LE(difference(pixelOf(thumbnail(folder.path("a.heic"), 20), 9, 9), qRgba(200, 100, 50, 128)), 8);
  const PngSpec greyAlpha{.width = 8, .height = 8, .colourType = PNG_COLOR_TYPE_GRAY_ALPHA};
  writePng(folder.path("grey.png"), greyAlpha, [](int, auto& row) {
    for (std::size_t i = 0; i < row.size(); i += 2) row[i] = 100, row[i + 1] = i % 4 == 0 ? 255 : 0;
  });
  EXPECT_LE(difference(pixelOf(thumbnail(folder.path("grey.png"), 4), 1, 1), qRgba(100, 100, 100, 128)), 2);
}

TEST(Decoding, BringsColoursOfAProfileToSrgb) {
  const TemporaryFolder folder;
  const QColor colour(200, 90, 60);
  const QColorSpace wide(QColorSpace::DisplayP3);
  auto converted = evenly(colour);
  converted.setColorSpace(wide);
  converted.convertToColorSpace(QColorSpace::SRgb);
  const QRgb expected = converted.pixel(0, 0);
  ASSERT_GT(difference(expected, colour.rgb()), 10);

  const auto profile = wide.iccProfile();
  writePng(folder.path("a.png"), {.width = 60, .height = 40, .profile = profile}, rowsOf(evenly(colour)));
  writeJpeg(folder.path("a.jpg"), evenly(colour), {.profile = profile});
  writeHeic(folder.path("a.heic"), evenly(colour), 1, profile);
  auto tagged = evenly(colour);
  tagged.setColorSpace(wide);
  for (const auto* name : {"a.tiff", "a.webp"}) {
    QImageWriter writer(QString::fromStdString(folder.path(name)));
    writer.setQuality(100);
    ASSERT_TRUE(writer.write(tagged)) << name;
  }
  for (const auto* name : {"a.png", "a.jpg", "a.heic", "a.tiff", "a.webp"}) {
    const auto image = thumbnail(folder.path(name), 30);
    EXPECT_LE(difference(pixelOf(image, 9, 9), expected), 4) << name;
    EXPECT_EQ(image.format(), QImage::Format_RGB32) << name;
  }
}

TEST(Decoding, BringsTransparentColoursToSrgbAsWell) {
  const TemporaryFolder folder;
  const PngSpec spec{.width = 60,
                     .height = 40,
                     .colourType = PNG_COLOR_TYPE_RGB_ALPHA,
                     .profile = QColorSpace(QColorSpace::DisplayP3).iccProfile()};
  auto converted = evenly(QColor(200, 90, 60));
  converted.setColorSpace(QColorSpace::DisplayP3);
  converted.convertToColorSpace(QColorSpace::SRgb);
  const QRgb opaque = converted.pixel(0, 0);
  writePng(folder.path("a.png"), spec, [](int, auto& row) {
    constexpr std::array<png_byte, 4> pixel{200, 90, 60, 128};
    for (std::size_t i = 0; i < row.size(); ++i) row[i] = pixel[i % 4];
  });
  const auto image = thumbnail(folder.path("a.png"), 30);
  EXPECT_EQ(image.format(), QImage::Format_ARGB32_Premultiplied);
  const auto expected = qRgba(qRed(opaque), qGreen(opaque), qBlue(opaque), 128);
  EXPECT_LE(difference(pixelOf(image, 9, 9), expected), 3);
}

TEST(Decoding, KeepsColoursWhenTheProfileIsOfNoUse) {
  const TemporaryFolder folder;
  auto cutShort = QColorSpace(QColorSpace::DisplayP3).iccProfile();
  cutShort.truncate(200);
  auto ofInks = QColorSpace(QColorSpace::DisplayP3).iccProfile();
  ofInks.replace(16, 4, "CMYK");
  for (const auto& profile : {cutShort, ofInks, QByteArray(500, 'x')}) {
    writeJpeg(folder.path("a.jpg"), evenly(QColor(200, 90, 60)), {.profile = profile});
    ::testing::internal::CaptureStderr();
    const auto image = thumbnail(folder.path("a.jpg"), 30);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "") << profile.size();
    EXPECT_LE(difference(pixelOf(image, 9, 9), qRgb(200, 90, 60)), 3) << profile.size();
  }
}

TEST(Decoding, TakesTheFirstFrameOfAnAnimation) {
  const TemporaryFolder folder;
  const std::vector<std::uint8_t> first(60 * 40, 0);
  const std::vector<std::uint8_t> second(60 * 40, 1);
  const auto path = folder.write("a.gif", gif(60, 40, {qRgb(10, 200, 30), qRgb(250, 0, 0)}, {first, second}));
  EXPECT_EQ(thumbnail(path, 30), evenly(QColor(10, 200, 30), 30, 20));
}

/// The bytes that this process has mapped.
std::size_t mappedBytes() {
  std::size_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

/// Makes a thumbnail in a child that may not map much more than it does already; true when there was one.
bool worksWithin(std::size_t further, const std::string& path) {
  const auto child = fork();
  if (child == 0) {
    const rlim_t most = mappedBytes() + further;
    const rlimit limit{.rlim_cur = most, .rlim_max = most};
    _exit(setrlimit(RLIMIT_AS, &limit) == 0 && !thumbnail(path, 64).isNull() ? 0 : 1);
  }
  int status = 1;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return status == 0;
}

TEST(Decoding, NeedsNoMemoryInProportionToAPngOrJpeg) {
  const TemporaryFolder folder;
  constexpr std::size_t little = 24 * 1024 * 1024;
  const PngSpec spec{.width = 30000, .height = 2000, .colourType = PNG_COLOR_TYPE_GRAY};
  writePng(folder.path("a.png"), spec, [](int, auto& row) { std::fill(row.begin(), row.end(), png_byte{99}); });
  EXPECT_EQ(thumbnail(folder.path("a.png"), 64), evenly(QColor(99, 99, 99), 64, 4));
  EXPECT_TRUE(worksWithin(little, folder.path("a.png")));

  writeJpeg(folder.path("a.jpg"), evenly(QColor(99, 99, 99), 8000, 4000));
  EXPECT_EQ(thumbnail(folder.path("a.jpg"), 64).size(), QSize(64, 32));
  EXPECT_TRUE(worksWithin(little, folder.path("a.jpg")));
}

TEST(Decoding, RefusesAnInterlacedPictureThatWouldTakeTooMuchMemory) {
  const TemporaryFolder folder;
  PngSpec spec{.width = 9000, .height = 9000, .bitDepth = 1, .colourType = PNG_COLOR_TYPE_GRAY, .interlaced = true};
  const auto white = [](int, auto& row) { std::fill(row.begin(), row.end(), png_byte{0xFF}); };
  writePng(folder.path("a.png"), spec, white);
  EXPECT_TRUE(thumbnail(folder.path("a.png"), 64).isNull());
  spec.interlaced = false;
  writePng(folder.path("b.png"), spec, white);
  EXPECT_EQ(thumbnail(folder.path("b.png"), 64), evenly(Qt::white, 64, 64));
}

}  // namespace
}  // namespace Nimbrel::ImageFile
