// Where captures go and what they are called.

#include "CaptureFixture.h"

#include "Foundation/Formats.h"

#include <filesystem>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;

class CaptureLocationTest : public Testing::CaptureFixture {
 protected:
  void SetUp() override { open(); }

  /// The present moment as it stands in names.
  [[nodiscard]] std::string moment() const { return Formats::date(home_.now, u"yyyy-MM-dd 'at' HH.mm.ss"); }
  [[nodiscard]] std::string inbox(CaptureMode mode) const {
    return store_->captureLocation(mode, CaptureDestination::inbox);
  }
  [[nodiscard]] std::string library(CaptureMode mode) const {
    return store_->captureLocation(mode, CaptureDestination::library);
  }
};

TEST_F(CaptureLocationTest, TheNameTellsKindAndMoment) {
  // 2026-03-08 20:00:00 in UTC: in no time zone the day before or later than the day after.
  const auto name = fs::path(inbox(CaptureMode::area)).filename().string();
  EXPECT_THAT(name, ::testing::MatchesRegex("Screenshot 2026-03-0[789] at [0-9][0-9]\\.[0-9][0-9]\\.[0-9][0-9]\\.png"));
  EXPECT_EQ(inbox(CaptureMode::area), home_.desktop("Screenshot " + moment() + ".png"));
  EXPECT_EQ(inbox(CaptureMode::window), inbox(CaptureMode::area));
  EXPECT_EQ(inbox(CaptureMode::screen), inbox(CaptureMode::area));
}

TEST_F(CaptureLocationTest, ARecordingLandsBesideTheScreenshots) {
  EXPECT_EQ(inbox(CaptureMode::recordArea), home_.desktop("Recording " + moment() + ".mov"));
  EXPECT_EQ(inbox(CaptureMode::recordScreen), inbox(CaptureMode::recordArea));
}

TEST_F(CaptureLocationTest, TheInboxIsTheFirstSourceFolder) {
  store_->settings().sources.set({home_.path("first"), home_.path("second")});
  EXPECT_EQ(inbox(CaptureMode::area), home_.path("first/Screenshot " + moment() + ".png"));
  EXPECT_EQ(inbox(CaptureMode::recordArea), home_.path("first/Recording " + moment() + ".mov"));
}

TEST_F(CaptureLocationTest, WithoutSourceFoldersTheInboxIsWhereTheSystemPutsScreenshots) {
  store_->settings().sources.set({});
  EXPECT_EQ(inbox(CaptureMode::area), home_.desktop("Screenshot " + moment() + ".png"));
  home_.folder().write(".config/Nimbrel/com.apple.screencapture.json", R"({"location": "~/Shots"})");
  EXPECT_EQ(inbox(CaptureMode::area), home_.path("Shots/Screenshot " + moment() + ".png"));
}

TEST_F(CaptureLocationTest, InTheLibraryAScreenshotLiesUnderYearAndMonth) {
  EXPECT_EQ(library(CaptureMode::window), home_.inLibrary("2026/2026-03/Screenshot " + moment() + ".png"));
}

TEST_F(CaptureLocationTest, InTheLibraryARecordingLiesInAFolderOfItsOwnWithoutYears) {
  EXPECT_EQ(library(CaptureMode::recordArea), home_.inLibrary("Recordings/Recording " + moment() + ".mov"));
  EXPECT_EQ(library(CaptureMode::recordScreen), library(CaptureMode::recordArea));
}

TEST_F(CaptureLocationTest, AskingMakesNothing) {
  static_cast<void>(library(CaptureMode::area));
  static_cast<void>(library(CaptureMode::recordArea));
  EXPECT_FALSE(fs::exists(home_.path("Pictures")));
}

TEST_F(CaptureLocationTest, ACaptureMakesTheFoldersOnTheWay) {
  setLibrary();
  begin(CaptureMode::area);
  EXPECT_TRUE(fs::is_directory(home_.inLibrary("2026/2026-03")));
  tool_->end(0);
  begin(CaptureMode::recordArea);
  EXPECT_TRUE(fs::is_directory(home_.inLibrary("Recordings")));
}

TEST_F(CaptureLocationTest, ACaptureInTheSameSecondGetsANumber) {
  take();
  const auto first = tool_->path();
  take();
  EXPECT_EQ(first, home_.desktop("Screenshot " + moment() + ".png"));
  EXPECT_EQ(tool_->path(), home_.desktop("Screenshot " + moment() + " 2.png"));
  take();
  EXPECT_EQ(tool_->path(), home_.desktop("Screenshot " + moment() + " 3.png"));
  EXPECT_EQ(store_->shots().size(), 3U);
}

TEST_F(CaptureLocationTest, ARecordingInTheSameSecondGetsANumberToo) {
  record();
  begin(CaptureMode::recordArea);
  EXPECT_EQ(tool_->path(), home_.desktop("Recording " + moment() + " 2.mov"));
}

}  // namespace
}  // namespace Nimbrel
