// Sizes and files that are no pictures. What the pixels look like is tested in ImageDecodingTest.cpp.

#include "Platform/ImageFile.h"

#include "PictureFiles.h"
#include "Support/Pictures.h"
#include "Support/TemporaryFolder.h"
#include "Unprivileged.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <array>
#include <filesystem>
#include <map>
#include <string>

namespace Nimbrel::ImageFile {
namespace {

namespace fs = std::filesystem;
using namespace Testing;
using ::testing::IsEmpty;

constexpr std::array bothSizes{640, 64};

std::vector<QImage> thumbnail(const std::string& path, int longerSide) {
  return thumbnails(path, std::array{longerSide});
}

/// One good file of each kind, 90 x 60, under the kind's extension.
std::map<std::string, std::string> oneOfEachKind(const TemporaryFolder& folder) {
  const auto image = Testing::picture(90, 60, 3);
  std::map<std::string, std::string> paths;
  for (const auto* kind : {"png", "jpg", "tiff", "webp"}) {
    writePicture(image, paths[kind] = folder.path(std::string("picture.") + kind));
  }
  paths["gif"] = folder.write("picture.gif", gif(90, 60, {qRgb(9, 99, 199)}, {std::vector<std::uint8_t>(90 * 60)}));
  paths["plain.tiff"] = folder.write("plain.tiff", tiff(image));
  writeHeic(paths["heic"] = folder.path("picture.heic"), image);
  writePng(paths["interlaced.png"] = folder.path("interlaced.png"), {.width = 90, .height = 60, .interlaced = true},
           rowsOf(image));
  writeJpeg(paths["progressive.jpg"] = folder.path("progressive.jpg"), image, {.progressive = true});
  writeJpeg(paths["cmyk.jpg"] = folder.path("cmyk.jpg"), image, {.colours = JCS_CMYK});
  return paths;
}

void expectUnreadable(const std::string& path, const std::string& what) {
  ::testing::internal::CaptureStderr();
  const auto images = thumbnails(path, bothSizes);
  const auto messages = ::testing::internal::GetCapturedStderr();
  EXPECT_THAT(images, IsEmpty()) << what;
  EXPECT_EQ(messages, "") << what;
}

TEST(PixelSize, IsToldForEveryKind) {
  const TemporaryFolder folder;
  for (const auto& [kind, path] : oneOfEachKind(folder)) EXPECT_EQ(pixelSize(path), (PixelSize{90, 60})) << kind;
}

TEST(PixelSize, GoesByTheContentNotByTheName) {
  const TemporaryFolder folder;
  for (const auto& [kind, path] : oneOfEachKind(folder)) {
    const auto misnamed = folder.path(kind == "png" ? "misnamed.jpg" : "misnamed.png");
    fs::copy_file(path, misnamed, fs::copy_options::overwrite_existing);
    EXPECT_EQ(pixelSize(misnamed), (PixelSize{90, 60})) << kind;
    EXPECT_EQ(thumbnails(misnamed, bothSizes).size(), 2U) << kind;
  }
}

TEST(PixelSize, IsTheOneStoredBeforeOrientation) {
  const TemporaryFolder folder;
  const auto image = Testing::picture(128, 64);
  writeJpeg(folder.path("a.jpg"), image, {.exif = exifWithOrientation(6)});
  writePng(folder.path("a.png"), {.width = 128, .height = 64, .exif = exifWithOrientation(6)}, rowsOf(image));
  writeHeic(folder.path("a.heic"), image, 6);
  for (const auto* name : {"a.jpg", "a.png", "a.heic"}) {
    EXPECT_EQ(pixelSize(folder.path(name)), (PixelSize{128, 64})) << name;
    EXPECT_EQ(thumbnail(folder.path(name), 640).at(0).size(), QSize(64, 128)) << name;
  }
}

TEST(PixelSize, NeedsNoMoreThanTheHeader) {
  const TemporaryFolder folder;
  const auto files = oneOfEachKind(folder);
  const auto png = contentOf(files.at("png")).substr(0, 33);
  EXPECT_EQ(pixelSize(folder.write("cut.png", png)), (PixelSize{90, 60}));
  const auto jpeg = contentOf(files.at("jpg"));
  EXPECT_EQ(pixelSize(folder.write("cut.jpg", jpeg.substr(0, jpeg.find("\xFF\xDA")))), (PixelSize{90, 60}));
  auto huge = png;
  huge.replace(16, 8, std::string("\0\0\x75\x30\0\0\x75\x30", 8));
  EXPECT_EQ(pixelSize(folder.write("huge.png", huge)), (PixelSize{30000, 30000}));
}

TEST(PixelSize, IsFoundBehindLongSegments) {
  const TemporaryFolder folder;
  writeJpeg(folder.path("a.jpg"), Testing::picture(90, 60), {.paddingSegments = 5});
  EXPECT_EQ(pixelSize(folder.path("a.jpg")), (PixelSize{90, 60}));
}

TEST(PixelSize, IsZeroWhereTheHeaderDoesNotTellIt) {
  const TemporaryFolder folder;
  // The height may stand behind the first scan.
  const std::string lateHeight("\xFF\xD8\xFF\xC0\0\x0B\x08\0\0\0\x5A\x01\x01\x11\0", 15);
  EXPECT_EQ(pixelSize(folder.write("late.jpg", lateHeight)), (PixelSize{90, 0}));
  for (const auto& [kind, path] : oneOfEachKind(folder)) {
    EXPECT_EQ(pixelSize(folder.write("cut", contentOf(path).substr(0, 9))), PixelSize()) << kind;
  }
  EXPECT_EQ(pixelSize(folder.write("end.jpg", "\xFF\xD8\xFF\xD9 and something behind it")), PixelSize());
}

TEST(ImageFile, KnowsNothingOfWhatIsNoPicture) {
  const TemporaryFolder folder;
  const auto pipe = folder.path("pipe.png");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const std::array paths{folder.path("missing.png"),
                         folder.makeFolder("folder.png"),
                         pipe,
                         std::string(),
                         folder.write("empty.png", ""),
                         folder.write("one.png", "\x89"),
                         folder.write("text.png", "There is a lot to be said for pictures, but this is text."),
                         folder.write("drawing.png", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>"),
                         folder.write("zeros.png", std::string(4096, '\0')),
                         folder.write("film.heic", std::string("\0\0\0\x14"
                                                               "ftypqt  \0\0\0\0qt  ",
                                                               20)),
                         folder.write("nothing.jpg", "\xFF\xD8\xFF"),
                         folder.write("nothing.gif", "GIF89a"),
                         folder.write("nothing.tiff", std::string("II*\0\xFF\xFF\xFF\xFF", 8)),
                         folder.write("nothing.webp", std::string("RIFF\x08\0\0\0WEBP", 12))};
  for (const auto& path : paths) {
    EXPECT_EQ(pixelSize(path), PixelSize()) << path;
    expectUnreadable(path, path);
  }
}

TEST(ImageFile, KnowsNothingOfWhatMayNotBeRead) {
  const TemporaryFolder folder;
  writePicture(folder.path("secret.png"));
  fs::permissions(folder.path("secret.png"), fs::perms::none);
  const Unprivileged unprivileged;
  EXPECT_EQ(pixelSize(folder.path("secret.png")), PixelSize());
  expectUnreadable(folder.path("secret.png"), "no right to read");
}

TEST(Thumbnails, AreNotMadeOfAPictureThatIsCutShort) {
  const TemporaryFolder folder;
  for (const auto& [kind, path] : oneOfEachKind(folder)) {
    const auto whole = contentOf(path);
    // A GIF ends with a byte that says no more than that it ends.
    const auto last = whole.size() - (kind == "gif" ? 2 : 1);
    for (const auto length : {whole.size() / 10, whole.size() / 4, whole.size() / 2, whole.size() * 9 / 10, last}) {
      expectUnreadable(folder.write("cut", whole.substr(0, length)), kind + " cut to " + std::to_string(length));
    }
  }
}

TEST(Thumbnails, OfDamagedPicturesNeverDoHarm) {
  const TemporaryFolder folder;
  for (const auto& [kind, path] : oneOfEachKind(folder)) {
    const auto whole = contentOf(path);
    for (std::size_t i = 0; i < 40; ++i) {
      auto damaged = whole;
      for (std::size_t at = i * 7 % 23; at < damaged.size(); at += 61 + i)
        damaged[at] = static_cast<char>(damaged[at] ^ 0x55);
      const auto file = folder.write("damaged", damaged);
      ::testing::internal::CaptureStderr();
      const auto images = thumbnails(file, bothSizes);
      const auto messages = ::testing::internal::GetCapturedStderr();
      // The decoder of HEIC prints what it thinks of some broken headers, whatever it is told.
      if (kind != "heic") {
        EXPECT_EQ(messages, "") << kind << " " << i;
      }
      EXPECT_TRUE(images.empty() || images.size() == 2) << kind << " " << i;
      static_cast<void>(pixelSize(file));
    }
  }
}

TEST(Thumbnails, AreNotMadeOfAPngWithDamagedPixels) {
  const TemporaryFolder folder;
  auto bytes = contentOf(oneOfEachKind(folder).at("png"));
  const auto pixels = bytes.find("IDAT") + 40;
  bytes[pixels] = static_cast<char>(bytes[pixels] ^ 0x10);
  expectUnreadable(folder.write("damaged.png", bytes), "damaged");
}

TEST(Thumbnails, OfAHugeDeclaredPictureAreRefusedWithoutItsMemory) {
  const TemporaryFolder folder;
  auto bytes = contentOf(oneOfEachKind(folder).at("gif"));
  bytes.replace(6, 4, "\xFF\xFF\xFF\xFF");
  expectUnreadable(folder.write("huge.gif", bytes), "GIF");
}

TEST(Thumbnails, HaveTheLongerSideAskedForAndAreNeverEnlarged) {
  const TemporaryFolder folder;
  const auto sizesOf = [&](int width, int height) {
    const auto path = folder.path("a.png");
    writePicture(path, width, height);
    const auto images = thumbnails(path, bothSizes);
    return images.size() == 2 ? std::pair(images[0].size(), images[1].size()) : std::pair(QSize(), QSize());
  };
  EXPECT_EQ(sizesOf(1440, 900), std::pair(QSize(640, 400), QSize(64, 40)));
  EXPECT_EQ(sizesOf(900, 1440), std::pair(QSize(400, 640), QSize(40, 64)));
  EXPECT_EQ(sizesOf(1366, 768), std::pair(QSize(640, 360), QSize(64, 36)));
  EXPECT_EQ(sizesOf(300, 200), std::pair(QSize(300, 200), QSize(64, 43)));
  EXPECT_EQ(sizesOf(64, 20), std::pair(QSize(64, 20), QSize(64, 20)));
  EXPECT_EQ(sizesOf(20000, 200), std::pair(QSize(640, 6), QSize(64, 1)));
  EXPECT_EQ(sizesOf(200, 20000), std::pair(QSize(6, 640), QSize(1, 64)));
  EXPECT_EQ(sizesOf(1, 1), std::pair(QSize(1, 1), QSize(1, 1)));
}

TEST(Thumbnails, AreEachMadeFromTheOneBefore) {
  const TemporaryFolder folder;
  for (const auto& [kind, path] : oneOfEachKind(folder)) {
    const auto images = thumbnails(path, std::array{40, 20, 10});
    ASSERT_EQ(images.size(), 3U) << kind;
    writePicture(images[0], folder.path("former.png"));
    EXPECT_EQ(thumbnail(folder.path("former.png"), 20).at(0), images[1]) << kind;
    EXPECT_EQ(thumbnail(path, 40).at(0), images[0]) << kind;
    EXPECT_EQ(images[2].size(), QSize(10, 7)) << kind;
  }
}

TEST(Thumbnails, OfNoSensibleSizeAreNone) {
  const TemporaryFolder folder;
  writePicture(folder.path("a.png"));
  EXPECT_THAT(thumbnails(folder.path("a.png"), {}), IsEmpty());
  EXPECT_THAT(thumbnail(folder.path("a.png"), 0), IsEmpty());
  EXPECT_THAT(thumbnails(folder.path("a.png"), std::array{64, -1}), IsEmpty());
}

}  // namespace
}  // namespace Nimbrel::ImageFile
