// A picture of a real screen, from the command to the row.

#include "Support/DesktopSession.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <QImage>

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::SizeIs;
using ::testing::StartsWith;
using Testing::StoreHome;

class CaptureTest : public ::testing::Test {
 protected:
  [[nodiscard]] Testing::ProgramOutput capture(const QStringList& words) const {
    return Testing::runProgram("nimbrelctl", QStringList{QStringLiteral("capture")} + words, home_.folder().path());
  }
  [[nodiscard]] ShotList shots() { return home_.open(ProcessRole::tool)->shots(); }

  Testing::DesktopSession session_;
  StoreHome home_;
};

TEST_F(CaptureTest, TheMainScreenBecomesAShotOfTheDisplay) {
  const auto result = capture({QStringLiteral("screen")});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output, "Captured\n");
  const auto rows = shots();
  ASSERT_THAT(rows, SizeIs(1));
  const auto& shot = *rows.front();
  EXPECT_EQ(shot.captureType, "display");
  EXPECT_THAT(shot.path, StartsWith(home_.desktop("Screenshot ")));
  EXPECT_FALSE(shot.filed);
  const QImage picture(QString::fromStdString(shot.path));
  EXPECT_FALSE(picture.isNull());
  EXPECT_EQ(shot.width, picture.width());
  EXPECT_EQ(shot.height, picture.height());
  EXPECT_GT(shot.width, 0);
}

TEST_F(CaptureTest, IntoTheLibraryItIsFiledAtOnce) {
  home_.open(ProcessRole::tool)->settings().captureDestination.set(CaptureDestination::library);
  EXPECT_EQ(capture({QStringLiteral("screen")}).status, 0);
  const auto rows = shots();
  ASSERT_THAT(rows, SizeIs(1));
  EXPECT_TRUE(rows.front()->filed);
  EXPECT_THAT(rows.front()->path, StartsWith(home_.inLibrary("20")));
}

TEST_F(CaptureTest, WithoutADisplayItFailsAndLeavesNothing) {
  session_.kill();
  const auto result = capture({QStringLiteral("screen")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, ::testing::HasSubstr("Capture failed; check screen recording permission"));
  EXPECT_THAT(shots(), SizeIs(0));
  EXPECT_TRUE(std::filesystem::is_empty(home_.desktop("")));
}

}  // namespace
}  // namespace Nimbrel
