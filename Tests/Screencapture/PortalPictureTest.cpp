#include "Screencapture/PortalPicture.h"

#include "Platform/MetadataStore.h"
#include "Support/Pictures.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QColorSpace>
#include <QColorTransform>
#include <QImage>
#include <QUrl>

namespace Nimbrel::Screencapture {

namespace {

namespace fs = std::filesystem;

QString address(const std::string& path) {
  return QUrl::fromLocalFile(QString::fromStdString(path)).toString(QUrl::FullyEncoded);
}

/// A user with a home, and a folder beside it for what is temporary.
class PortalPictureTest : public ::testing::Test {
 protected:
  PortalPictureTest() {
    setFolder("HOME", "home");
    setFolder("XDG_CACHE_HOME", "home/.cache");
    setFolder("TMPDIR", "tmp");
  }
  ~PortalPictureTest() override {
    for (const auto& [name, value] : former_) value.isNull() ? qunsetenv(name) : qputenv(name, value);
  }

  std::optional<Error> take(const std::string& path) {
    return takePortalPicture(address(path), fs::file_time_type::clock::now() - std::chrono::seconds(1),
                             {.path = target_});
  }

  std::string picture(const std::string& name) {
    auto path = folder_.path(name);
    Testing::writePicture(path, 64, 48, 3);
    return path;
  }

  Testing::TemporaryFolder folder_;
  std::string target_ = folder_.makeFolder("home/shots") + "/shot.png";

 private:
  void setFolder(const char* variable, const char* name) {
    former_.emplace_back(variable, qgetenv(variable));
    qputenv(variable, folder_.makeFolder(name).c_str());
  }

  std::vector<std::pair<const char*, QByteArray>> former_;
};

}  // namespace

TEST_F(PortalPictureTest, AddressesAreReadByteByByte) {
  EXPECT_EQ(localPath(QStringLiteral("file:///tmp/a%20b%25%C3%A4.png")).value(), "/tmp/a b%\xC3\xA4.png");
  EXPECT_EQ(localPath(QStringLiteral("file:///tmp/%FFodd.png")).value(), "/tmp/\xFFodd.png");
  EXPECT_EQ(localPath(QStringLiteral("file://localhost/tmp/a.png")).value(), "/tmp/a.png");
}

TEST_F(PortalPictureTest, OnlyFilesOfThisMachineAreTaken) {
  for (const char* other : {"", "/tmp/a.png", "file:a.png", "file://elsewhere/tmp/a.png", "http://localhost/a.png",
                            "file:///tmp/a%00b.png", "data:image/png;base64,AAAA"}) {
    EXPECT_FALSE(localPath(QString::fromLatin1(other))) << other;
  }
}

TEST_F(PortalPictureTest, WhatIsNoPngBecomesOne) {
  const auto jpeg = picture("tmp/portal.jpg");
  const QImage shown(QString::fromStdString(jpeg));
  EXPECT_EQ(take(jpeg), std::nullopt);
  QImage written(QString::fromStdString(target_), "png");
  EXPECT_EQ(written.colorSpace(), QColorSpace(QColorSpace::SRgb));
  written.setColorSpace({});
  EXPECT_EQ(written, shown);
  EXPECT_EQ(MetadataStore::isScreenCapture(target_), true);
}

TEST_F(PortalPictureTest, ColoursOfAnotherSpaceStayWhatTheyAre) {
  QImage picture(64, 48, QImage::Format_RGB32);
  picture.fill(qRgb(200, 60, 60));
  const QColorSpace wide(QColorSpace::DisplayP3);
  picture.setColorSpace(wide);
  const auto jpeg = folder_.path("tmp/portal.jpg");
  Testing::writePicture(picture, jpeg);
  EXPECT_EQ(take(jpeg), std::nullopt);
  const auto colour = QImage(QString::fromStdString(target_)).pixelColor(30, 20);
  const auto expected = wide.transformationToColorSpace(QColorSpace::SRgb).map(picture.pixelColor(30, 20));
  EXPECT_NEAR(colour.red(), expected.red(), 3);
  EXPECT_NEAR(colour.green(), expected.green(), 3);
  EXPECT_NEAR(colour.blue(), expected.blue(), 3);
}

TEST_F(PortalPictureTest, AFileThatIsNoPictureIsAnErrorAndStays) {
  for (const char* content : {"", "no picture at all", "\x89PNG\r\n\x1A\n and not more"}) {
    const auto file = folder_.write("tmp/portal.png", content);
    EXPECT_TRUE(take(file));
    EXPECT_TRUE(fs::exists(file));
    EXPECT_FALSE(fs::exists(target_));
  }
}

TEST_F(PortalPictureTest, APictureThatIsCutOffIsAnError) {
  const auto file = picture("tmp/portal.png");
  fs::resize_file(file, fs::file_size(file) / 2);
  EXPECT_TRUE(take(file));
  EXPECT_FALSE(fs::exists(target_));
}

TEST_F(PortalPictureTest, WhatIsTemporaryGoes) {
  for (const char* name : {"tmp/portal.png", "home/.cache/portal/portal.png"}) {
    const auto file = picture(name);
    EXPECT_EQ(take(file), std::nullopt);
    EXPECT_FALSE(fs::exists(file)) << name;
    fs::remove(target_);
  }
}

TEST_F(PortalPictureTest, WhatLiesAmongTheUsersPicturesStaysAndIsNoSecondShot) {
  const auto file = picture("home/Pictures/Screenshot 2.png");
  const auto content = Testing::contentOf(file);
  EXPECT_EQ(take(file), std::nullopt);
  EXPECT_EQ(Testing::contentOf(file), content);
  EXPECT_EQ(MetadataStore::isScreenCapture(file), false);
  EXPECT_EQ(MetadataStore::isScreenCapture(target_), true);
}

TEST_F(PortalPictureTest, ALinkAmongTemporaryFilesLeavesThePictureItLeadsTo) {
  const auto file = picture("home/Pictures/Screenshot 2.png");
  const auto link = folder_.path("tmp/portal.png");
  fs::create_symlink(file, link);
  EXPECT_EQ(take(link), std::nullopt);
  EXPECT_TRUE(fs::exists(file));
}

TEST_F(PortalPictureTest, AHomeAmongTemporaryFilesIsAHome) {
  qputenv("HOME", folder_.makeFolder("tmp/home").c_str());
  const auto file = picture("tmp/home/Pictures/Screenshot 2.png");
  EXPECT_EQ(take(file), std::nullopt);
  EXPECT_TRUE(fs::exists(file));
}

TEST_F(PortalPictureTest, AFileFromBeforeTheRequestIsLeftAlone) {
  for (const char* name : {"tmp/portal.png", "home/Pictures/Screenshot 2.png"}) {
    const auto file = picture(name);
    Testing::setModificationTime(file, 1'000'000'000);
    EXPECT_EQ(take(file), std::nullopt);
    EXPECT_TRUE(fs::exists(file)) << name;
    EXPECT_EQ(MetadataStore::isScreenCapture(file), std::nullopt);
    fs::remove(target_);
  }
}

TEST_F(PortalPictureTest, WhatCouldNotBeTakenStays) {
  const auto file = picture("tmp/portal.png");
  Testing::writePicture(target_, 5, 5);
  EXPECT_TRUE(take(file));
  EXPECT_TRUE(fs::exists(file));
}

}  // namespace Nimbrel::Screencapture
