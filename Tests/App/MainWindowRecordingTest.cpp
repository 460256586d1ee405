// A recording of a real screen, cut with the tools for it.

#include "App/DesktopFixture.h"

#include "Linux/Capture/ScreenCaptureProcess.h"
#include "Platform/MediaFile.h"
#include "Support/Movies.h"
#include "Support/ProgramRun.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QSlider>

#include <chrono>
#include <filesystem>

namespace Nimbrel {
namespace {

using namespace std::chrono_literals;
using ::testing::EndsWith;
using ::testing::StartsWith;
using Testing::waitUntil;

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
  /// The middle of the slider's knob, on the screen.
  [[nodiscard]] QPoint knobOf(const char* name) const {
    const auto& slider = part<QSlider>(name);
    constexpr int knob = 16;
    const auto room = slider.width() - knob;
    const auto share = static_cast<double>(slider.value() - slider.minimum()) / (slider.maximum() - slider.minimum());
    return slider.mapToGlobal(QPoint(knob / 2 + static_cast<int>(share * room), slider.height() / 2));
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
  const auto from = knobOf("recordingTools.start");
  pointTo(from);
  act(QStringLiteral("mousedown 1"));
  const auto& start = part<QSlider>("recordingTools.start");
  carryTo(from + QPoint(start.width() / 3, 0), [&] { return start.value() > 300; });
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
