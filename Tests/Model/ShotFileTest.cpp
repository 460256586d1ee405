#include "Model/ShotFile.h"

#include "Support/Pictures.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/xattr.h>

#include <filesystem>

namespace Nimbrel::ShotFile {
namespace {

using Testing::TemporaryFolder;
using Testing::writePicture;

TEST(ImageTypes, AreTheSevenThatCountAsImages) {
  EXPECT_EQ(imageTypes().size(), 7U);
  for (const auto* name : {"a.png", "a.jpg", "a.jpeg", "a.heic", "a.tiff", "a.gif", "a.webp"}) {
    EXPECT_TRUE(hasImageType(name)) << name;
  }
  for (const auto* name : {"a.tif", "a.mov", "a.txt", "png", ".png", "a."}) EXPECT_FALSE(hasImageType(name)) << name;
}

TEST(ImageTypes, AnUpperCaseExtensionCounts) { EXPECT_TRUE(hasImageType("/x/Shot.PNG")); }

TEST(UniqueURL, AFreePathStaysAsItIs) {
  const TemporaryFolder folder;
  EXPECT_EQ(uniqueURL(folder.path("a.png")), folder.path("a.png"));
}

TEST(UniqueURL, TakenNamesAreCountedUp) {
  const TemporaryFolder folder;
  folder.write("a.png", "");
  folder.write("a 2.png", "");
  EXPECT_EQ(uniqueURL(folder.path("a.png")), folder.path("a 3.png"));
}

TEST(UniqueURL, ANameWithoutExtensionGetsNoDot) {
  const TemporaryFolder folder;
  folder.write("a", "");
  EXPECT_EQ(uniqueURL(folder.path("a")), folder.path("a 2"));
}

TEST(UniqueURL, ANumberFitsIntoTheLongestName) {
  const TemporaryFolder folder;
  const auto path = folder.write(std::string(251, 'n') + ".png", "");
  EXPECT_EQ(uniqueURL(path), folder.path(std::string(249, 'n') + " 2.png"));
}

TEST(UniqueURL, ALinkThatLeadsNowhereIsTaken) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink("nowhere", folder.path("a.png"));
  EXPECT_EQ(uniqueURL(folder.path("a.png")), folder.path("a 2.png"));
}

TEST(UniqueURL, WhenAllAreTakenTheWantedPathComesBack) {
  const TemporaryFolder folder;
  folder.write("a.png", "");
  for (int n = 2; n <= 999; ++n) folder.write("a " + std::to_string(n) + ".png", "");
  EXPECT_EQ(uniqueURL(folder.path("a.png")), folder.path("a.png"));
}

TEST(Created, IsTheEarlierOfBirthAndModification) {
  const TemporaryFolder folder;
  const auto path = folder.write("a.png", "x");
  Testing::setModificationTime(path, 1'000'000'000.5);
  EXPECT_DOUBLE_EQ(secondsSince1970(created(path, timestamp(5))), 1'000'000'000.5);

  Testing::setModificationTime(path, 9'000'000'000);
  EXPECT_LT(secondsSince1970(created(path, timestamp(5))), 8'000'000'000.0);
}

TEST(Created, OfAMissingFileIsThePresentMoment) {
  EXPECT_EQ(created("/nonexistent/a.png", timestamp(5)), timestamp(5));
}

TEST(Dimensions, AreThoseOfThePicture) {
  const TemporaryFolder folder;
  writePicture(folder.path("a.png"), 120, 80);
  EXPECT_EQ(dimensions(folder.path("a.png")), (ImageFile::PixelSize{120, 80}));
}

TEST(Dimensions, OfWhatIsNoPictureAreUnknown) {
  const TemporaryFolder folder;
  EXPECT_EQ(dimensions(folder.write("a.png", "not a picture")), ImageFile::PixelSize{});
  EXPECT_EQ(dimensions(folder.path("missing.png")), ImageFile::PixelSize{});
}

TEST(Size, IsThatOfTheFileOrNothing) {
  const TemporaryFolder folder;
  EXPECT_EQ(size(folder.write("a", "12345")), 5);
  EXPECT_EQ(size(folder.path("missing")), 0);
}

TEST(CaptureType, IsWhatWasLeftWithTheFile) {
  const TemporaryFolder folder;
  const auto path = folder.write("a.png", "");
  EXPECT_EQ(captureType(path), "");
  ASSERT_EQ(setxattr(path.c_str(), "user.kMDItemScreenCaptureType", "window", 6, 0), 0);
  EXPECT_EQ(captureType(path), "window");
}

TEST(Thumbnail, FitsTheLongerSideAndIsNeverLarger) {
  const TemporaryFolder folder;
  writePicture(folder.path("a.png"), 300, 200);
  EXPECT_EQ(thumbnail(folder.path("a.png"), 64).size(), QSize(64, 43));
  EXPECT_EQ(thumbnail(folder.path("a.png"), 640).size(), QSize(300, 200));
  EXPECT_TRUE(thumbnail(folder.path("missing.png"), 64).isNull());
}

}  // namespace
}  // namespace Nimbrel::ShotFile
