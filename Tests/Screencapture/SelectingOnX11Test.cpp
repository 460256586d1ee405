#include "Platform/MetadataStore.h"
#include "Screencapture/PixelMemory.h"
#include "Screencapture/TestScreen.h"
#include "Support/EnvironmentVariable.h"
#include "Support/Waiting.h"

#include <signal.h>

#include <array>
#include <filesystem>

namespace Nimbrel {

namespace {

using Testing::ColourWindow;
using Testing::EnvironmentVariable;
using Testing::showsDesktop;
using Testing::waitUntil;

const QStringList selection{QStringLiteral("-i"), QStringLiteral("-s")};

class SelectingOnX11 : public Testing::ScreenTest {
 protected:
  /// Acts on an overlay and returns the status of the program that it belongs to.
  int statusAfter(const QString& actions) {
    const auto process = startOverlay(selection);
    act(actions);
    const int status = statusOf(*process);
    EXPECT_EQ(process->readAllStandardError().toStdString(), "");
    EXPECT_FALSE(hasOverlay());
    return status;
  }
};

TEST_F(SelectingOnX11, WhatIsDraggedOverIsTaken) {
  EXPECT_EQ(statusAfter(QStringLiteral("mousemove 100 150 mousedown 1 mousemove 200 200 mousemove 401 351 mouseup 1")),
            0);
  EXPECT_EQ(picture().size(), QSize(301, 201));
  EXPECT_TRUE(showsDesktop(picture(), {100, 150})) << "neither dimmed nor lined";
  EXPECT_EQ(MetadataStore::screenCaptureType(path()), "selection");
}

TEST_F(SelectingOnX11, ScaledOrNotPixelsArePixels) {
  const EnvironmentVariable scale("QT_SCALE_FACTOR", "2");
  const EnvironmentVariable scales("QT_SCREEN_SCALE_FACTORS", "1.5;2");
  addMonitors({{"left", QRect(0, 0, 640, 800), true}, {"right", QRect(640, 0, 640, 700)}});
  EXPECT_EQ(statusAfter(QStringLiteral("mousemove 600 300 mousedown 1 mousemove 700 400 mousemove 903 551 mouseup 1")),
            0);
  EXPECT_EQ(picture().size(), QSize(303, 251)) << "over both monitors";
  EXPECT_TRUE(showsDesktop(picture(), {600, 300}));
}

TEST_F(SelectingOnX11, AClickTakesTheWindowUnderThePointer) {
  const ColourWindow window(display(), QRect(300, 200, 320, 180), QColor(200, 40, 90));
  EXPECT_EQ(statusAfter(QStringLiteral("mousemove 400 300 click 1")), 0);
  EXPECT_EQ(picture().size(), window.frame().size());
  EXPECT_EQ(picture().pixelColor(picture().rect().center()), QColor(200, 40, 90));
}

TEST_F(SelectingOnX11, ThePictureIsWhatWasThereWhenItBegan) {
  auto window = std::make_unique<ColourWindow>(display(), QRect(300, 200, 320, 180), QColor(200, 40, 90));
  const auto process = startOverlay(selection);
  window.reset();
  act(QStringLiteral("mousemove 350 250 mousedown 1 mousemove 370 270 mousemove 400 300 mouseup 1"));
  EXPECT_EQ(statusOf(*process), 0);
  EXPECT_EQ(picture().pixelColor(20, 20), QColor(200, 40, 90));
}

TEST_F(SelectingOnX11, EdgesSnapToWindowsUnlessShiftIsHeld) {
  const ColourWindow window(display(), QRect(300, 200, 320, 180), QColor(200, 40, 90));
  const auto frame = window.frame();
  const auto gesture = QStringLiteral("mousemove %1 %2 mousedown 1 mousemove 600 300 mousemove %3 %4 mouseup 1")
                           .arg(frame.left() - 3)
                           .arg(frame.top() - 3)
                           .arg(frame.right() + 4)
                           .arg(frame.bottom() + 4);
  EXPECT_EQ(statusAfter(gesture), 0);
  EXPECT_EQ(picture().size(), frame.size());
  std::filesystem::remove(path());
  EXPECT_EQ(statusAfter(QStringLiteral("keydown Shift_L ") + gesture + QStringLiteral(" keyup Shift_L")), 0);
  EXPECT_EQ(picture().size(), frame.size() + QSize(6, 6));
}

TEST_F(SelectingOnX11, SpaceCarriesTheSelection) {
  EXPECT_EQ(
      statusAfter(QStringLiteral("mousemove 100 100 mousedown 1 mousemove 150 150 mousemove 200 200 keydown space "
                                 "mousemove 500 400 keyup space mouseup 1")),
      0);
  EXPECT_EQ(picture().size(), QSize(100, 100));
  EXPECT_TRUE(showsDesktop(picture(), {400, 300}));
}

TEST_F(SelectingOnX11, ArrowKeysMoveTheCornerAndReturnTakes) {
  EXPECT_EQ(statusAfter(QStringLiteral("mousemove 100 100 mousedown 1 mousemove 150 150 mousemove 200 200 key Right "
                                       "key Down key Down key ctrl+Right key Left key Up key Return mouseup 1")),
            0);
  EXPECT_EQ(picture().size(), QSize(110, 101));
  EXPECT_TRUE(showsDesktop(picture(), {100, 100}));
}

TEST_F(SelectingOnX11, EscapeCancels) {
  EXPECT_EQ(statusAfter(QStringLiteral("key Escape")), 0);
  EXPECT_TRUE(isFolderEmpty());
}

TEST_F(SelectingOnX11, TheRightButtonCancels) {
  EXPECT_EQ(statusAfter(QStringLiteral("mousemove 100 100 mousedown 1 mousemove 300 300 click 3 mouseup 1")), 0);
  EXPECT_TRUE(isFolderEmpty());
}

TEST_F(SelectingOnX11, SignalsCancel) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const auto process = startOverlay(selection);
    ASSERT_EQ(::kill(static_cast<pid_t>(process->processId()), signal), 0);
    EXPECT_EQ(statusOf(*process), 0);
    EXPECT_FALSE(hasOverlay());
  }
  EXPECT_TRUE(isFolderEmpty());
}

TEST_F(SelectingOnX11, TheEndOfItsParentCancels) {
  QProcess parent;
  parent.setProcessEnvironment(Testing::environmentOf(home_.path()));
  // The shell stays its parent since more is to come.
  const auto command = QStringLiteral("\"$0\" -i -s -d \"$1\"; true");
  parent.start(QStringLiteral("sh"), {QStringLiteral("-c"), command, Testing::programPath("nimbrel-screencapture"),
                                      QString::fromStdString(path())});
  ASSERT_TRUE(waitUntil([this] { return hasOverlay(); }));
  parent.kill();
  ASSERT_TRUE(parent.waitForFinished());
  EXPECT_TRUE(waitUntil([this] { return !hasOverlay(); }));
  EXPECT_TRUE(isFolderEmpty());
}

TEST_F(SelectingOnX11, TheOverlayReturnsToTheTop) {
  const auto process = startOverlay(selection);
  const auto other = xcb_generate_id(display().get());
  const std::array<std::uint32_t, 2> values{0xff00ff, 1};
  xcb_create_window(display().get(), XCB_COPY_FROM_PARENT, other, display().root(), 0, 0, 200, 200, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT,
                    values.data());
  xcb_map_window(display().get(), other);
  display().flush();
  const auto isSeen = [&] {
    const auto image = screenPixels(display(), QRect(50, 50, 1, 1));
    return image && image.value()->image().pixelColor(0, 0) == QColor(255, 0, 255);
  };
  EXPECT_TRUE(waitUntil([&] { return !isSeen(); }));
  act(QStringLiteral("key Escape"));
  EXPECT_EQ(statusOf(*process), 0);
  EXPECT_TRUE(waitUntil(isSeen));
}

TEST_F(SelectingOnX11, TheSelectionIsSeenBetweenDimmedParts) {
  const auto process = startOverlay(selection);
  act(QStringLiteral("mousemove 100 100 mousedown 1 mousemove 150 150 mousemove 400 400"));
  const auto colourAt = [this](int x, int y) {
    const auto image = screenPixels(display(), QRect(x, y, 1, 1));
    return image ? image.value()->image().pixel(0, 0) : 0;
  };
  EXPECT_TRUE(waitUntil([&] { return colourAt(390, 390) == Testing::desktopColour(390, 390); }));
  EXPECT_EQ(colourAt(250, 99), qRgb(255, 255, 255));
  EXPECT_LT(qGreen(colourAt(600, 200)), 200 * 6 / 10);
  act(QStringLiteral("key Escape mouseup 1"));
  EXPECT_EQ(statusOf(*process), 0);
}

}  // namespace

}  // namespace Nimbrel
