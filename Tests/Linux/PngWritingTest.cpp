#include "Platform/ImageFile.h"

#include "Support/Pictures.h"
#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"

#include <QColorSpace>

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <filesystem>
#include <random>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using namespace Testing;
using ::testing::ElementsAre;

QImage readBack(const std::string& path) {
  QImage image(QString::fromStdString(path));
  EXPECT_EQ(image.colorSpace(), QColorSpace(QColorSpace::SRgb));
  image.setColorSpace({});
  return image;
}

std::ptrdiff_t filesIn(const std::string& folder) { return std::distance(fs::directory_iterator(folder), {}); }

/// Empty when it was written.
std::string failureOf(const QImage& image, const std::string& path) {
  const auto error = ImageFile::writePNG(image, path);
  return error ? error->message : "";
}

/// What no compression makes smaller.
QImage noise(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  std::mt19937 random(1);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) image.setPixel(x, y, static_cast<QRgb>(random()) | 0xFF000000);
  }
  return image;
}

TEST(PngWriting, KeepsEveryPixel) {
  const TemporaryFolder folder;
  for (const auto& image : {picture(333, 101, 3), noise(65, 40), noise(1, 1)}) {
    const auto path = folder.path(std::to_string(image.width()) + ".png");
    ASSERT_EQ(failureOf(image, path), "");
    const auto written = readBack(path);
    EXPECT_FALSE(written.hasAlphaChannel());
    EXPECT_EQ(written.convertToFormat(QImage::Format_RGB32), image);
    EXPECT_EQ(ImageFile::picture(path), image);
  }
}

TEST(PngWriting, KeepsWhatIsTransparent) {
  const TemporaryFolder folder;
  QImage image(60, 40, QImage::Format_ARGB32_Premultiplied);
  image.fill(QColor(200, 100, 50, 128));
  ASSERT_EQ(failureOf(image, folder.path("a.png")), "");
  const auto written = readBack(folder.path("a.png"));
  ASSERT_TRUE(written.hasAlphaChannel());
  EXPECT_EQ(written.convertToFormat(QImage::Format_ARGB32_Premultiplied), image);
}

TEST(PngWriting, SavesTheAlphaWhereNothingIsTransparent) {
  const TemporaryFolder folder;
  QImage image(60, 40, QImage::Format_ARGB32_Premultiplied);
  image.fill(QColor(200, 100, 50));
  ASSERT_EQ(failureOf(image, folder.path("a.png")), "");
  EXPECT_FALSE(readBack(folder.path("a.png")).hasAlphaChannel());
  EXPECT_EQ(readBack(folder.path("a.png")).pixel(30, 20), qRgb(200, 100, 50));
}

TEST(PngWriting, HoldsPixelsAndNothingElse) {
  const TemporaryFolder folder;
  auto image = picture(800, 600, 3);
  image.setText(QStringLiteral("Comment"), QStringLiteral("words"));
  image.setColorSpace(QColorSpace::DisplayP3);
  image.setDotsPerMeterX(5000);
  ASSERT_EQ(failureOf(image, folder.path("a.png")), "");
  EXPECT_THAT(chunksOfPng(folder.path("a.png")), ElementsAre("IHDR", "sRGB", "IDAT", "IEND"));
}

TEST(PngWriting, FlatPicturesBecomeSmall) {
  const TemporaryFolder folder;
  ASSERT_EQ(failureOf(picture(2000, 1000, 3), folder.path("a.png")), "");
  EXPECT_LT(fs::file_size(folder.path("a.png")), 2000U * 1000 * 3 / 20);
}

TEST(PngWriting, NeverReplacesAFile) {
  const TemporaryFolder folder;
  folder.write("a.png", "mine");
  EXPECT_EQ(failureOf(picture(9, 9), folder.path("a.png")), "A file of that name is already there");
  EXPECT_EQ(contentOf(folder.path("a.png")), "mine");
  EXPECT_EQ(filesIn(folder.path()), 1);
}

TEST(PngWriting, IsOpenToOthersAsTheUserWantsIt) {
  const TemporaryFolder folder;
  ASSERT_EQ(failureOf(picture(9, 9), folder.path("a.png")), "");
  const auto mask = ::umask(0);
  ::umask(mask);
  EXPECT_EQ(static_cast<unsigned>(fs::status(folder.path("a.png")).permissions()), 0666U & ~mask);
}

TEST(PngWriting, SaysWhyItFailed) {
  const TemporaryFolder folder;
  EXPECT_EQ(failureOf({}, folder.path("a.png")), "The picture cannot be encoded");
  EXPECT_NE(failureOf(picture(9, 9), folder.path("missing/a.png")), "");
  EXPECT_EQ(filesIn(folder.path()), 0);
}

TEST(PngWriting, LeavesNothingOnAFullDisk) {
  const TemporaryFolder folder;
  const auto disk = folder.makeFolder("disk");
  const auto outcome = onSmallDisk(disk, 512 << 10, [&] {
    if (failureOf(noise(600, 600), disk + "/a.png") != "No space left on the disk") return 1;
    return filesIn(disk) == 0 ? 0 : 2;
  });
  EXPECT_EQ(outcome, 0);
}

}  // namespace
}  // namespace Nimbrel
