// Captures of a real screen by the program that takes them, from the Store's side.

#include "Linux/Capture/ScreenCaptureProcess.h"
#include "Platform/MediaFile.h"
#include "Platform/MetadataStore.h"
#include "Support/DesktopSession.h"
#include "Support/EnvironmentVariable.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QProcess>

#include <chrono>
#include <filesystem>

namespace Nimbrel {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using Testing::waitUntil;

/// What a hand does or an eye looks for, in words of xdotool; whether it came about.
bool xdotool(const QStringList& words) { return QProcess::execute(QStringLiteral("xdotool"), words) == 0; }

class StoreCaptureTest : public ::testing::Test {
 protected:
  StoreCaptureTest() {
    Services services;
    services.screenCaptureTool =
        makeScreenCaptureProcess({.program = Testing::programPath("nimbrel-screencapture").toStdString()});
    store_ = home_.open(ProcessRole::tool, std::move(services));
  }

  void begin(CaptureMode mode) { store_->capture(mode, Store::Panel::Keep); }
  [[nodiscard]] bool shows(const char* windowName) const {
    const auto name = QLatin1String(windowName);
    return waitUntil([&] {
      return xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"), name});
    });
  }
  [[nodiscard]] bool showsOverlay() const { return shows("^Select a part of the screen$"); }
  void finish() {
    EXPECT_TRUE(waitUntil([this] { return !store_->captureBusy() && !store_->recording(); })) << store_->status();
  }

  /// The one shot that there is.
  [[nodiscard]] Shot theShot() const {
    EXPECT_TRUE(waitUntil([this] { return store_->shots().size() == 1; }));
    return store_->shots().empty() ? Shot() : *store_->shots().front();
  }

  // For the stop control, whatever this program shows its own windows on.
  Testing::EnvironmentVariable platform_{"QT_QPA_PLATFORM", "xcb"};
  Testing::DesktopSession session_;
  Testing::StoreHome home_;
  std::unique_ptr<Store> store_;
};

TEST_F(StoreCaptureTest, ASelectionIsCataloguedAndSelected) {
  begin(CaptureMode::area);
  ASSERT_TRUE(showsOverlay());
  EXPECT_TRUE(xdotool({QStringLiteral("mousemove"), QStringLiteral("100"), QStringLiteral("100"),
                       QStringLiteral("mousedown"), QStringLiteral("1"), QStringLiteral("mousemove"),
                       QStringLiteral("400"), QStringLiteral("300"), QStringLiteral("mouseup"), QStringLiteral("1")}));
  finish();
  const auto shot = theShot();
  EXPECT_EQ(shot.captureType, "selection");
  EXPECT_EQ(shot.width, 300);
  EXPECT_EQ(shot.height, 200);
  EXPECT_THAT(store_->selection(), ElementsAre(shot.id));
  EXPECT_EQ(store_->lastCapturedID(), shot.id);
  EXPECT_EQ(store_->status(), "Captured");
}

TEST_F(StoreCaptureTest, AWindowIsCataloguedAsOne) {
  const Testing::DesktopClient client({"xmessage", "-geometry", "300x200+150+150", "hello"});
  ASSERT_TRUE(shows("xmessage"));
  begin(CaptureMode::window);
  ASSERT_TRUE(showsOverlay());
  EXPECT_TRUE(xdotool({QStringLiteral("mousemove"), QStringLiteral("250"), QStringLiteral("250"),
                       QStringLiteral("click"), QStringLiteral("1")}));
  finish();
  const auto shot = theShot();
  EXPECT_EQ(shot.captureType, "window");
  EXPECT_GE(shot.width, 300);
  EXPECT_LT(shot.width, 400);
}

TEST_F(StoreCaptureTest, TheMainScreenIsCataloguedWhole) {
  begin(CaptureMode::screen);
  finish();
  const auto shot = theShot();
  EXPECT_EQ(shot.captureType, "display");
  EXPECT_EQ(shot.width, 1280);
  EXPECT_EQ(shot.height, 800);
}

TEST_F(StoreCaptureTest, CancellingLeavesNoShot) {
  begin(CaptureMode::area);
  ASSERT_TRUE(showsOverlay());
  EXPECT_TRUE(xdotool({QStringLiteral("key"), QStringLiteral("Escape")}));
  finish();
  EXPECT_EQ(store_->status(), "Capture cancelled");
  EXPECT_THAT(store_->shots(), IsEmpty());
}

TEST_F(StoreCaptureTest, ARecordingIsRememberedAndNotCatalogued) {
  begin(CaptureMode::recordScreen);
  ASSERT_TRUE(shows("^Recording$"));
  EXPECT_TRUE(store_->recording());
  Testing::runEventLoopFor(3s);
  store_->stopRecording();
  finish();
  const auto& movie = store_->lastRecordingURL();
  ASSERT_TRUE(movie);
  EXPECT_THAT(*movie, StartsWith(home_.desktop("Recording ")));
  EXPECT_EQ(store_->status(), "Recording saved to Desktop");
  const auto length = MediaFile::duration(*movie);
  ASSERT_TRUE(length);
  EXPECT_GE(length.value(), 3);
  EXPECT_EQ(MetadataStore::screenCaptureType(*movie), "display");
  EXPECT_THAT(store_->shots(), IsEmpty());
  store_->scan();
  EXPECT_THAT(store_->shots(), IsEmpty());
}

}  // namespace
}  // namespace Nimbrel
