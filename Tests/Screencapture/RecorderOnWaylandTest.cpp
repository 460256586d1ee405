#include "Screencapture/RecorderFixture.h"

namespace Nimbrel::Screencapture {

namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using Testing::numberedPicture;
using Testing::ScreenDouble;

}  // namespace

TEST_F(RecorderOnWaylandTest, AnInterruptFinishesTheMovie) {
  const auto screen = ScreenDouble::open(pipeWire_, numberedPicture(3, {160, 120}));
  cast_.show({{screen->node(), {}}});
  for (const auto& options : {QStringList{QStringLiteral("-v"), QStringLiteral("-i"), QStringLiteral("-Jvideo")},
                              QStringList{QStringLiteral("-v"), QStringLiteral("-m")}}) {
    start(options);
    interrupt();
    EXPECT_EQ(exitStatus(), Done);
    const auto movie = Testing::readMovie(target_);
    EXPECT_EQ(movie.size, QSize(160, 120));
    EXPECT_THAT(movie.numbers(), AllOf(Not(IsEmpty()), Each(3)));
    std::filesystem::remove(target_);
  }
}

TEST_F(RecorderOnWaylandTest, ADesktopWithoutAPlaceForTheStopControlIsRecordedAllTheSame) {
  qunsetenv("QT_QPA_PLATFORM");
  const auto screen = ScreenDouble::open(pipeWire_, numberedPicture(3, {160, 120}));
  cast_.show({{screen->node(), {}}});
  start({QStringLiteral("-v"), QStringLiteral("-m")});
  interrupt();
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_EQ(Testing::readMovie(target_).size, QSize(160, 120));
}

TEST_F(RecorderOnWaylandTest, CancellingEndsWellWithoutAFile) {
  portal_.answer(QStringLiteral("Start"), 1);
  start({QStringLiteral("-v"), QStringLiteral("-m")});
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_FALSE(std::filesystem::exists(target_));
}

TEST_F(RecorderOnWaylandTest, ASessionWithoutAPortalEndsBadlyAndSaysWhy) {
  portal_.vanish();
  start({QStringLiteral("-v"), QStringLiteral("-m")});
  EXPECT_EQ(exitStatus(), Refused);
  EXPECT_THAT(program_->readAllStandardError().toStdString(), HasSubstr("does not offer ScreenCast"));
  EXPECT_FALSE(std::filesystem::exists(target_));
}

}  // namespace Nimbrel::Screencapture
