#include "Views/Recording/RecordingToolsView.h"

#include "Platform/MovieWriter.h"
#include "Support/Waiting.h"
#include "Views/Recording/RecordingFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QSemaphore>
#include <QTest>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using namespace Testing;

class RecordingToolsViewTest : public RecordingFixture {};

TEST_F(RecordingToolsViewTest, ShowsTheWholeRecording) {
  writeRecording(3, {1});
  openAndWait();
  EXPECT_EQ(sheet_->windowTitle(), QStringLiteral("Recording Tools"));
  EXPECT_EQ(sheet_->width(), 560);
  EXPECT_EQ(textOf("recordingTools.fileName"), "Screen recording.mov");
  EXPECT_EQ(textOf("recordingTools.startTime"), "0:00");
  EXPECT_EQ(textOf("recordingTools.endTime"), "0:03");
  EXPECT_EQ(textOf("recordingTools.fpsValue"), "8");
  EXPECT_FALSE(removeSilence()->isChecked());
  EXPECT_EQ(note(), "");
  EXPECT_FALSE(in<QWidget>(*sheet_, "recordingTools.progress")->isVisible());
}

TEST_F(RecordingToolsViewTest, ButtonsStandInTheirOrder) {
  writeRecording(1);
  openAndWait();
  std::vector<std::pair<int, std::string>> titles;
  for (const auto* each : sheet_->findChildren<QPushButton*>()) {
    titles.emplace_back(each->mapTo(sheet_.data(), QPoint()).x(), each->text().toStdString());
  }
  std::ranges::sort(titles);
  std::vector<std::string> inOrder;
  for (const auto& [place, title] : titles) inOrder.push_back(title);
  EXPECT_THAT(inOrder, ElementsAre("Show Original", "Cancel", "Export GIF", "Save Trimmed Copy"));
  EXPECT_TRUE(save()->isDefault());
}

TEST_F(RecordingToolsViewTest, ALongNameIsShortenedInItsMiddle) {
  path_ = home_.desktop("Screen recording " + std::string(150, 'x') + " 2026.mov");
  writeRecording(1);
  openAndWait();
  EXPECT_EQ(sheet_->width(), 560);
  EXPECT_THAT(textOf("recordingTools.fileName"), StartsWith("Screen recording"));
  EXPECT_THAT(textOf("recordingTools.fileName"), ::testing::EndsWith("2026.mov"));
  EXPECT_LT(textOf("recordingTools.fileName").size(), 120U);
}

TEST_F(RecordingToolsViewTest, TheEndsNeverCross) {
  writeRecording(3);
  openAndWait();
  EXPECT_NEAR(start()->span().most, 2.9, 0.001);
  EXPECT_DOUBLE_EQ(end()->span().least, 0.1);
  move(start(), 1);
  EXPECT_DOUBLE_EQ(end()->span().least, 1.1);
  EXPECT_EQ(textOf("recordingTools.startTime"), "0:01");
  move(end(), 2);
  EXPECT_DOUBLE_EQ(start()->span().most, 1.9);
  EXPECT_EQ(textOf("recordingTools.endTime"), "0:02");
  start()->setValue(start()->maximum());
  end()->setValue(end()->minimum());
  EXPECT_DOUBLE_EQ(start()->seconds(), 1.9);
  EXPECT_DOUBLE_EQ(end()->seconds(), 2);
  move(end(), 0);
  EXPECT_DOUBLE_EQ(end()->seconds(), 2);
}

TEST_F(RecordingToolsViewTest, AStartThatWasMovedTooEarlyIsHeldInTheRecording) {
  writeRecording(0.5);
  openSheet();
  move(start(), 0.9);
  ASSERT_TRUE(waitUntil([this] { return end()->seconds() < 1; }));
  EXPECT_NEAR(end()->seconds(), 0.5, 0.001);
  EXPECT_DOUBLE_EQ(start()->seconds(), end()->seconds() - 0.1);
}

TEST_F(RecordingToolsViewTest, TheFirstSliderHasTheFocusAndTabGoesDownTheSheet) {
  writeRecording(1);
  openAndWait();
  QApplication::setActiveWindow(sheet_.data());
  ASSERT_TRUE(waitUntil([this] { return sheet_->focusWidget() != nullptr; }));
  std::vector<std::string> order;
  for (int i = 0; i < 8; ++i) {
    order.push_back(sheet_->focusWidget()->objectName().toStdString());
    QTest::keyClick(sheet_->focusWidget(), Qt::Key_Tab);
  }
  EXPECT_THAT(order, ElementsAre("recordingTools.start", "recordingTools.end", "recordingTools.removeSilence",
                                 "recordingTools.fps", "recordingTools.showOriginal", "recordingTools.cancel",
                                 "recordingTools.exportGif", "recordingTools.save"));
}

TEST_F(RecordingToolsViewTest, KeysMoveTheEnds) {
  writeRecording(3);
  openAndWait();
  QTest::keyClick(start(), Qt::Key_Right);
  EXPECT_DOUBLE_EQ(start()->seconds(), 0.1);
  QTest::keyClick(start(), Qt::Key_PageUp);
  EXPECT_DOUBLE_EQ(start()->seconds(), 1.1);
  QTest::keyClick(end(), Qt::Key_Home);
  EXPECT_DOUBLE_EQ(end()->seconds(), 1.2);
  QTest::keyClick(end(), Qt::Key_End);
  EXPECT_NEAR(end()->seconds(), 3, 0.001);
}

TEST_F(RecordingToolsViewTest, FramesPerSecondGoFromFourToFifteen) {
  writeRecording(1);
  openAndWait();
  auto* slider = in<QSlider>(*sheet_, "recordingTools.fps");
  QTest::keyClick(slider, Qt::Key_Right);
  EXPECT_EQ(textOf("recordingTools.fpsValue"), "9");
  QTest::keyClick(slider, Qt::Key_Home);
  EXPECT_EQ(textOf("recordingTools.fpsValue"), "4");
  QTest::keyClick(slider, Qt::Key_End);
  EXPECT_EQ(textOf("recordingTools.fpsValue"), "15");
}

TEST_F(RecordingToolsViewTest, AnUnreadableRecordingSaysWhyAndKeepsASecond) {
  home_.folder().write("Desktop/Screen recording.mov", "no movie");
  openSheet();
  ASSERT_TRUE(waitUntil([this] { return !note().empty(); }));
  EXPECT_EQ(note(), "The file is damaged or no recording");
  EXPECT_EQ(textOf("recordingTools.endTime"), "0:01");
  EXPECT_DOUBLE_EQ(end()->span().least, 0.1);
  EXPECT_DOUBLE_EQ(end()->span().most, 1);
  EXPECT_EQ(store_->status(), "");
  save()->click();
  ASSERT_TRUE(waitUntil([this] { return save()->isEnabled(); }));
  EXPECT_EQ(note(), "The file is damaged or no recording");
  EXPECT_THAT(madeFiles(), IsEmpty());
}

TEST_F(RecordingToolsViewTest, ARecordingThatIsNotThereSaysSo) {
  openSheet();
  ASSERT_TRUE(waitUntil([this] { return !note().empty() && !strip()->words().isEmpty(); }));
  EXPECT_EQ(note(), "The file is not there");
  EXPECT_EQ(strip()->words(), QStringLiteral("The file is not there"));
  EXPECT_TRUE(preview()->frame().isNull());
  move(start(), 0.5);
  EXPECT_TRUE(isOpen());
}

TEST_F(RecordingToolsViewTest, ARecordingWithoutALengthHasATenthOfASecondAndStillExports) {
  writeMovie(path_, {.times = {0, 0.02}, .end = 0.05});
  openAndWait();
  EXPECT_NEAR(end()->seconds(), 0.1, 0.001);
  exportBy(save());
  EXPECT_THAT(readMovie(home_.desktop("Screen recording.trimmed.mov")).numbers(), ElementsAre(0, 1));
}

TEST_F(RecordingToolsViewTest, ARecordingThatIsStillWrittenIsShownAsFarAsItGoes) {
  constexpr QSize size(160, 120);
  auto writer = MovieWriter::open(path_, {.size = size});
  ASSERT_TRUE(writer) << writer.error().message;
  for (int i = 0; i < 300; ++i) ASSERT_FALSE(writer.value()->addFrame(numberedPicture(i, size), i / 30.0));
  openAndWait();
  EXPECT_EQ(numberIn(preview()->frame()), 0);
  save()->click();
  ASSERT_TRUE(waitUntil([this] { return !isOpen() || save()->isEnabled(); }));
  for (int i = 300; i < 330; ++i) ASSERT_FALSE(writer.value()->addFrame(numberedPicture(i, size), i / 30.0));
  EXPECT_FALSE(writer.value()->finish(11));
  EXPECT_EQ(readMovie(path_).pictures.size(), 330U) << "nothing has disturbed who writes it";
}

TEST_F(RecordingToolsViewTest, PartsAreNamedToAssistiveTechnology) {
  writeRecording(3, {1});
  openAndWait();
  move(start(), 1);
  const auto named = [](QWidget* widget) {
    auto* interface = QAccessible::queryAccessibleInterface(widget);
    return std::pair(interface->role(), interface->text(QAccessible::Name).toStdString());
  };
  EXPECT_EQ(named(start()), std::pair(QAccessible::Slider, std::string("Start")));
  EXPECT_EQ(named(end()), std::pair(QAccessible::Slider, std::string("End")));
  EXPECT_EQ(start()->accessibleDescription(), QStringLiteral("0:01"));
  EXPECT_EQ(named(preview()), std::pair(QAccessible::Graphic, std::string("Preview")));
  EXPECT_EQ(named(strip()), std::pair(QAccessible::Graphic, std::string("Sound")));
  EXPECT_EQ(named(removeSilence()), std::pair(QAccessible::CheckBox, std::string("Remove silent sections")));
  EXPECT_EQ(named(in<QSlider>(*sheet_, "recordingTools.fps")),
            std::pair(QAccessible::Slider, std::string("Frames per second")));
}

TEST_F(RecordingToolsViewTest, ClosesWithoutWaitingForWhatItReads) {
  writeLongRecording();
  QSemaphore gate;
  auto& readers = exports_->readers();
  for (int thread = 0; thread < readers.maxThreadCount(); ++thread) readers.start([&gate] { gate.acquire(); });
  openSheet();
  QTest::keyClick(sheet_.data(), Qt::Key_Escape);
  EXPECT_FALSE(isOpen());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(sheet_.isNull());
  gate.release(readers.maxThreadCount());
  readers.waitForDone();
}

}  // namespace
}  // namespace Nimbrel
