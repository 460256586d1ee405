// A recording of a real screen, cut with the tools for it.

#include "App/DesktopFixture.h"

#include "Linux/Capture/ScreenCaptureProcess.h"
#include "Platform/MediaFile.h"
#include "Support/Movies.h"
#include "Support/ProgramRun.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QCursor>
#include <QSlider>
#include <QTest>

#include <chrono>
#include <filesystem>

namespace Nimbrel {
namespace {

using namespace std::chrono_literals;
using ::testing::EndsWith;
using ::testing::StartsWith;
using Testing::waitUntil;

constexpr int waitForPress = 500;  ///< milliseconds

class MainWindowRecordingTest : public Testing::DesktopFixture {
 protected:
  MainWindowRecordingTest() {
    services_.screenCaptureTool =
        makeScreenCaptureProcess({.program = Testing::programPath("nimbrel-screencapture").toStdString()});
    openWindow();
  }

  /// Records the screen for a while.
  void record() {
    chooseFromMenu("menu.recordScreen");
    ASSERT_TRUE(waitUntil([this] { return store().recording(); })) << store().status();
    Testing::runEventLoopFor(3s);
    store().stopRecording();
    ASSERT_TRUE(waitUntil([this] { return !store().captureBusy(); }));
    ASSERT_TRUE(store().lastRecordingURL()) << store().status();
  }
  /// The middle of the slider's knob.
  [[nodiscard]] static QPoint knobOf(const QSlider& slider) {
    constexpr int knob = 16;
    const auto room = slider.width() - knob;
    const auto share = static_cast<double>(slider.value() - slider.minimum()) / (slider.maximum() - slider.minimum());
    return {knob / 2 + static_cast<int>(share * room), slider.height() / 2};
  }
  /// Takes the knob. As long as the sheet grows by what it learns of the recording, a hand may miss it.
  static void grab(const QSlider& slider) {
    EXPECT_TRUE(waitUntil([&] {
      pointAt(slider, [&] { return knobOf(slider); });
      act(QStringLiteral("mousedown 1"));
      if (QTest::qWaitFor([&] { return slider.isSliderDown(); }, waitForPress)) return true;
      act(QStringLiteral("mouseup 1"));
      return false;
    }));
  }
};

TEST_F(MainWindowRecordingTest, IsCutByDraggingItsEnds) {
  record();
  const auto recording = *store().lastRecordingURL();
  const auto length = MediaFile::duration(recording).value();
  ASSERT_GE(length, 2.5);
  comeBack();
  chooseFromMenu("menu.editLastRecording");
  const auto& end = part<QSlider>("recordingTools.end");
  ASSERT_TRUE(waitUntil([&] { return end.maximum() > 600; })) << "its length is known";
  const auto& start = part<QSlider>("recordingTools.start");
  grab(start);
  carryTo(QCursor::pos() + QPoint(start.width() / 3, 0), [&] { return start.value() > 300; });
  const auto cut = start.value() / 600.0;
  ASSERT_GT(cut, 0.5);
  press(Qt::Key_Return);
  ASSERT_TRUE(waitUntil([&] { return store().lastRecordingURL() != recording; }));
  EXPECT_THAT(*store().lastRecordingURL(), EndsWith(".trimmed.mov"));
  EXPECT_THAT(store().status(), StartsWith("Saved "));
  EXPECT_FALSE(isShown(QStringLiteral("recordingTools")));
  const auto copy = Testing::readMovie(*store().lastRecordingURL());
  EXPECT_NEAR(copy.duration, length - cut, 0.1);
  EXPECT_EQ(copy.size, Testing::readMovie(recording).size);
  EXPECT_TRUE(std::filesystem::exists(recording)) << "the original stays";
}

}  // namespace
}  // namespace Nimbrel
