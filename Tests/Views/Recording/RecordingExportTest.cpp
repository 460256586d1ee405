#include "Support/GifReading.h"
#include "Support/Waiting.h"
#include "Views/Recording/RecordingFixture.h"

#include <QProgressBar>
#include <QTest>

#include <chrono>
#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace Testing;

class RecordingExportTest : public RecordingFixture {
 protected:
  [[nodiscard]] QProgressBar* progress() const { return in<QProgressBar>(*sheet_, "recordingTools.progress"); }
  [[nodiscard]] bool hasBegun() const {
    return waitUntil([this] { return !sheet_ || progress()->value() > 0; }) && sheet_;
  }
};

TEST_F(RecordingExportTest, ATrimmedCopyBecomesTheLastRecording) {
  writeRecording(2);
  store_->setLastRecordingURL(path_);
  openAndWait();
  exportBy(save());
  const auto copy = home_.desktop("Screen recording.trimmed.mov");
  EXPECT_EQ(store_->lastRecordingURL(), copy);
  EXPECT_EQ(store_->status(), "Saved Screen recording.trimmed.mov");
  EXPECT_THAT(workspace_->revealed, ElementsAre(copy));
}

TEST_F(RecordingExportTest, AGifLeavesTheLastRecordingAsItIs) {
  writeRecording(2);
  store_->setLastRecordingURL(path_);
  openAndWait();
  exportBy(exportGif());
  EXPECT_EQ(store_->lastRecordingURL(), path_);
  EXPECT_EQ(store_->status(), "Saved Screen recording.gif");
  EXPECT_THAT(workspace_->revealed, ElementsAre(home_.desktop("Screen recording.gif")));
}

TEST_F(RecordingExportTest, ASecondCopyGetsANumberAndACopyOfACopyAnotherEnding) {
  writeRecording(1);
  const auto recording = path_;
  for (int i = 0; i < 2; ++i) {
    openAndWait();
    exportBy(save());
  }
  path_ = *store_->lastRecordingURL();
  EXPECT_EQ(path_, home_.desktop("Screen recording.trimmed 2.mov"));
  path_ = home_.desktop("Screen recording.trimmed.mov");
  openAndWait();
  exportBy(save());
  path_ = recording;
  EXPECT_THAT(madeFiles(), ElementsAre("Screen recording.trimmed 2.mov", "Screen recording.trimmed.mov",
                                       "Screen recording.trimmed.trimmed.mov"));
}

TEST_F(RecordingExportTest, TheSheetTellsWhatItDoes) {
  writeLongRecording();
  openSheet();
  ASSERT_TRUE(waitUntil([this] { return textOf("recordingTools.endTime") == "20:00"; }));
  save()->click();
  EXPECT_EQ(note(), "Exporting recording…");
  EXPECT_FALSE(save()->isEnabled());
  EXPECT_FALSE(exportGif()->isEnabled());
  EXPECT_TRUE(progress()->isVisible());
  EXPECT_TRUE(hasBegun());
  button("recordingTools.showOriginal")->click();
  EXPECT_THAT(workspace_->revealed, ElementsAre(path_));
  EXPECT_TRUE(isOpen());
}

TEST_F(RecordingExportTest, ForAGifItSaysSo) {
  writeLongRecording();
  openSheet();
  exportGif()->click();
  EXPECT_EQ(note(), "Creating GIF…");
  EXPECT_FALSE(save()->isEnabled());
  EXPECT_FALSE(exportGif()->isEnabled());
}

TEST_F(RecordingExportTest, TimeLeftIsToldOnceItIsKnown) {
  writeLongRecording();
  openSheet();
  ASSERT_TRUE(waitUntil([this] { return textOf("recordingTools.endTime") == "20:00"; }));
  save()->click();
  ASSERT_TRUE(waitUntil([this] { return !textOf("recordingTools.timeLeft").empty(); }));
  EXPECT_THAT(textOf("recordingTools.timeLeft"), ::testing::MatchesRegex("About .* left|Almost done"));
}

TEST_F(RecordingExportTest, CancelClosesTheSheetAndTheExportGoesOn) {
  writeRecording(2);
  openAndWait();
  save()->click();
  button("recordingTools.cancel")->click();
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(store_->status(), "");
  ASSERT_TRUE(waitUntil([this] { return !store_->status().empty(); }));
  EXPECT_EQ(store_->status(), "Saved Screen recording.trimmed.mov");
  EXPECT_EQ(store_->lastRecordingURL(), home_.desktop("Screen recording.trimmed.mov"));
  EXPECT_THAT(workspace_->revealed, ElementsAre(home_.desktop("Screen recording.trimmed.mov")));
}

TEST_F(RecordingExportTest, ASheetThatWasOpenedMeanwhileStays) {
  writeRecording(2);
  openAndWait();
  save()->click();
  QTest::keyClick(sheet_.data(), Qt::Key_Escape);
  openSheet();
  EXPECT_TRUE(save()->isEnabled());
  ASSERT_TRUE(waitUntil([this] { return !store_->status().empty(); }));
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(note(), "");
}

TEST_F(RecordingExportTest, ReturnSavesAndEscapeCancels) {
  writeRecording(1);
  openAndWait();
  QTest::keyClick(start(), Qt::Key_Return);
  EXPECT_EQ(note(), "Exporting recording…");
  QTest::keyClick(sheet_.data(), Qt::Key_Escape);
  EXPECT_FALSE(isOpen());
  EXPECT_TRUE(waitUntil([this] { return !store_->status().empty(); }));
}

TEST_F(RecordingExportTest, SlidersThatMoveMeanwhileChangeNothing) {
  writeRecording(3);
  openAndWait();
  move(start(), 1);
  move(end(), 2);
  save()->click();
  move(start(), 0);
  move(end(), 3);
  ASSERT_TRUE(waitUntil([this] { return !isOpen(); }));
  const auto copy = readMovie(home_.desktop("Screen recording.trimmed.mov"));
  EXPECT_EQ(copy.numbers().front(), 30);
  EXPECT_NEAR(copy.duration, 1, 0.002);
}

TEST_F(RecordingExportTest, FramesPerSecondAreThoseOfTheGif) {
  writeRecording(2);
  openAndWait();
  in<QSlider>(*sheet_, "recordingTools.fps")->setValue(4);
  exportBy(exportGif());
  EXPECT_EQ(readGif(home_.desktop("Screen recording.gif")).images.size(), 8U);
}

TEST_F(RecordingExportTest, ARecordingThatVanishedIsToldAndTheSheetStays) {
  writeRecording(2);
  openAndWait();
  std::filesystem::remove(path_);
  for (auto* each : {save(), exportGif()}) {
    each->click();
    ASSERT_TRUE(waitUntil([each] { return each->isEnabled(); }));
    EXPECT_EQ(note(), "The file is not there");
    EXPECT_FALSE(progress()->isVisible());
  }
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(store_->status(), "");
  EXPECT_EQ(store_->lastRecordingURL(), std::nullopt);
  EXPECT_THAT(madeFiles(), IsEmpty());
}

TEST_F(RecordingExportTest, WhoWaitsForAllExportsIsCalledAfterTheLast) {
  int calls = 0;
  exports_->whenDone([&] { ++calls; });
  EXPECT_EQ(calls, 1) << "none runs";
  writeRecording(1);
  openAndWait();
  save()->click();
  exports_->begin({.url = path_, .start = 0, .end = 1, .removeSilence = false, .fps = 4});
  exports_->whenDone([&] {
    ++calls;
    EXPECT_THAT(madeFiles(), ElementsAre("Screen recording.gif", "Screen recording.trimmed.mov"));
    EXPECT_THAT(workspace_->revealed, ::testing::SizeIs(2));
  });
  EXPECT_EQ(calls, 1);
  ASSERT_TRUE(waitUntil([&] { return calls == 2; }));
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_EQ(calls, 2);
}

TEST_F(RecordingExportTest, WhoWaitsIsAlsoCalledAfterAFailure) {
  bool isCalled = false;
  exports_->begin({.url = path_, .start = 0, .end = 1, .removeSilence = false, .fps = std::nullopt});
  exports_->whenDone([&] { isCalled = true; });
  EXPECT_FALSE(isCalled);
  ASSERT_TRUE(waitUntil([&] { return isCalled; }));
  EXPECT_THAT(workspace_->revealed, IsEmpty());
}

TEST_F(RecordingExportTest, AFolderThatIsGoneIsToldAndTheSheetStays) {
  writeRecording(1);
  openAndWait();
  const auto folder = std::filesystem::path(path_).parent_path();
  // Even a user who may write anywhere cannot write there.
  const auto aside = folder.parent_path() / "aside";
  std::filesystem::rename(folder, aside);
  save()->click();
  ASSERT_TRUE(waitUntil([this] { return save()->isEnabled(); }));
  EXPECT_THAT(note(), ::testing::Not(IsEmpty()));
  exportGif()->click();
  ASSERT_TRUE(waitUntil([this] { return exportGif()->isEnabled(); }));
  EXPECT_EQ(note(), "Could not create the GIF");
  std::filesystem::rename(aside, folder);
  EXPECT_TRUE(isOpen());
  EXPECT_THAT(madeFiles(), IsEmpty());
}

TEST_F(RecordingExportTest, WhatRunsWhenTheApplicationEndsLeavesNoFile) {
  writeLongRecording();
  openSheet();
  ASSERT_TRUE(waitUntil([this] { return textOf("recordingTools.endTime") == "20:00"; }));
  save()->click();
  ASSERT_TRUE(hasBegun());
  sheet_->reject();
  exports_.reset();
  EXPECT_THAT(madeFiles(), IsEmpty());
  EXPECT_EQ(store_->status(), "");
}

}  // namespace
}  // namespace Nimbrel
