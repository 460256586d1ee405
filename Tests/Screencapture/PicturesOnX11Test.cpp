#include "Platform/MetadataStore.h"
#include "Screencapture/TestScreen.h"
#include "Support/EnvironmentVariable.h"

namespace Nimbrel {

namespace {

using Testing::showsDesktop;

const QStringList mainScreen{QStringLiteral("-m")};

class PicturesOnX11 : public Testing::ScreenTest {};

TEST_F(PicturesOnX11, TheMainScreenIsTakenPixelByPixel) {
  const auto process = start(mainScreen);
  EXPECT_EQ(statusOf(*process), 0);
  EXPECT_EQ(process->readAllStandardError().toStdString(), "");
  EXPECT_EQ(picture().size(), QSize(1280, 800));
  EXPECT_TRUE(showsDesktop(picture(), {0, 0})) << "the pointer is not in it";
  EXPECT_EQ(MetadataStore::screenCaptureType(path()), "display");
}

TEST_F(PicturesOnX11, OfSeveralMonitorsTheMainOneIsTaken) {
  addMonitors({{"left", QRect(0, 100, 500, 600)}, {"right", QRect(500, 0, 780, 800), true}});
  EXPECT_EQ(statusOf(*start(mainScreen)), 0);
  EXPECT_EQ(picture().size(), QSize(780, 800));
  EXPECT_TRUE(showsDesktop(picture(), {500, 0}));
}

TEST_F(PicturesOnX11, OfAMonitorBeyondTheScreenItsPartIsTaken) {
  addMonitors({{"wide", QRect(1000, 700, 900, 900), true}});
  EXPECT_EQ(statusOf(*start(mainScreen)), 0);
  EXPECT_EQ(picture().size(), QSize(280, 100));
  EXPECT_TRUE(showsDesktop(picture(), {1000, 700}));
}

TEST_F(PicturesOnX11, TheUsersScaleDoesNotMatter) {
  const Testing::EnvironmentVariable scale("QT_SCALE_FACTOR", "2");
  EXPECT_EQ(statusOf(*start(mainScreen)), 0);
  EXPECT_TRUE(showsDesktop(picture(), {0, 0}));
  EXPECT_EQ(picture().size(), QSize(1280, 800));
}

}  // namespace

}  // namespace Nimbrel
