#include "Screencapture/PictureFile.h"

#include "Platform/MetadataStore.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

namespace Nimbrel::Screencapture {

namespace {

using Subject = CaptureRequest::Subject;

QImage picture() {
  QImage image(33, 17, QImage::Format_RGB32);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) image.setPixel(x, y, qRgb(x * 7, y * 13, x * y % 251));
  }
  return image;
}

class PictureFileTest : public ::testing::Test {
 protected:
  [[nodiscard]] auto entryCount() const {
    return std::distance(std::filesystem::directory_iterator(folder_.path()), std::filesystem::directory_iterator());
  }

  Testing::TemporaryFolder folder_;
};

TEST_F(PictureFileTest, HoldsThePictureAndWhatItIsOf) {
  const auto path = folder_.path("Screenshot ü.png");
  EXPECT_FALSE(writePicture(picture(), Subject::window, path));
  const QImage read(QString::fromStdString(path), "png");
  ASSERT_EQ(read.size(), picture().size());
  for (int y = 0; y < read.height(); ++y) {
    for (int x = 0; x < read.width(); ++x) ASSERT_EQ(read.pixel(x, y), picture().pixel(x, y)) << x << ", " << y;
  }
  EXPECT_EQ(MetadataStore::isScreenCapture(path), true);
  EXPECT_EQ(MetadataStore::screenCaptureType(path), "window");
  EXPECT_EQ(entryCount(), 1);
}

TEST_F(PictureFileTest, IsMarkedByItsSubject) {
  EXPECT_FALSE(writePicture(picture(), Subject::selection, folder_.path("a.png")));
  EXPECT_FALSE(writePicture(picture(), Subject::mainScreen, folder_.path("b.png")));
  EXPECT_EQ(MetadataStore::screenCaptureType(folder_.path("a.png")), "selection");
  EXPECT_EQ(MetadataStore::screenCaptureType(folder_.path("b.png")), "display");
}

TEST_F(PictureFileTest, MayBeReadByWhomTheUserLets) {
  const auto before = ::umask(027);
  EXPECT_FALSE(writePicture(picture(), Subject::selection, folder_.path("a.png")));
  ::umask(before);
  struct stat facts {};
  ASSERT_EQ(::stat(folder_.path("a.png").c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777, 0640U);
}

TEST_F(PictureFileTest, KeepsWhatIsTransparent) {
  QImage image(4, 4, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  image.setPixelColor(1, 1, QColor(200, 100, 50, 255));
  EXPECT_FALSE(writePicture(image, Subject::window, folder_.path("a.png")));
  const QImage read(QString::fromStdString(folder_.path("a.png")));
  EXPECT_EQ(read.pixelColor(0, 0).alpha(), 0);
  EXPECT_EQ(read.pixelColor(1, 1), QColor(200, 100, 50));
}

TEST_F(PictureFileTest, ReplacesNothing) {
  const auto path = folder_.write("taken.png", "somebody's");
  EXPECT_TRUE(writePicture(picture(), Subject::selection, path));
  EXPECT_EQ(Testing::contentOf(path), "somebody's");
  ASSERT_EQ(::symlink("nowhere", folder_.path("link.png").c_str()), 0);
  EXPECT_TRUE(writePicture(picture(), Subject::selection, folder_.path("link.png")));
  EXPECT_EQ(entryCount(), 2) << "and leaves nothing";
}

TEST_F(PictureFileTest, FailsWhereNoFileCanBeMade) {
  EXPECT_TRUE(writePicture(picture(), Subject::selection, folder_.path("missing/a.png")));
  EXPECT_TRUE(writePicture(picture(), Subject::selection, "/proc/a.png"));
  const auto file = folder_.write("file", "");
  EXPECT_TRUE(writePicture(picture(), Subject::selection, file + "/a.png"));
  EXPECT_EQ(entryCount(), 1);
}

TEST_F(PictureFileTest, LeavesNothingOfAPictureThatCannotBeWritten) {
  EXPECT_TRUE(writePicture(QImage(), Subject::selection, folder_.path("a.png")));
  EXPECT_TRUE(writePicture(picture(), Subject::selection, folder_.path(std::string(300, 'a') + ".png")));
  EXPECT_EQ(entryCount(), 0);
}

TEST_F(PictureFileTest, LeavesNothingWhereThePictureDoesNotFit) {
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{50, before.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const auto error = writePicture(picture(), Subject::selection, folder_.path("a.png"));
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_TRUE(error);
  EXPECT_EQ(entryCount(), 0);
}

}  // namespace

}  // namespace Nimbrel::Screencapture
