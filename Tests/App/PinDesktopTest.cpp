// Pins on a real display, among the windows of others.

#include "App/DesktopFixture.h"

#include "Linux/X11/X11WindowStacking.h"
#include "Support/DesktopSession.h"
#include "Support/ProgramRun.h"
#include "Support/Waiting.h"
#include "Views/Pins/PinButton.h"

#include <gmock/gmock.h>

#include <QScreen>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <stdexcept>

namespace Nimbrel {
namespace {

using namespace std::chrono_literals;
using Testing::waitUntil;

/// Longer than a focus takes that is on its way.
constexpr auto aWhile = 400ms;

/// As if a compositor ran on the display.
class Blending {
 public:
  Blending() {
    EXPECT_TRUE(connection_.isUp());
    const auto window = xcb_generate_id(connection_.get());
    xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window, connection_.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(connection_.get(), window, connection_.atom("_NET_WM_CM_S0"), XCB_CURRENT_TIME);
    // An answer tells that the server has come so far.
    std::free(xcb_get_input_focus_reply(connection_.get(), xcb_get_input_focus(connection_.get()), nullptr));
  }

 private:
  XcbConnection connection_;
};

class PinDesktopTest : public Testing::DesktopFixture {
 protected:
  PinDesktopTest() {
    services_.windowStacking = makeX11WindowStacking(std::make_shared<XcbConnection>());
    addShot("Screenshot 1.png", "A recipe for soup");
    addShot("Screenshot secret.png", "the key is under the mat", {"Password"});
    openWindowAside();
  }
  ~PinDesktopTest() override { act(QStringLiteral("set_desktop 0")); }

  /// The window of the shot, once the display shows it.
  PinnedView& pinned(const std::string& name) {
    pins().pin(shot(name));
    const auto id = shot(name)->id;
    if (!waitUntil([&] { return pins().window(id) != nullptr && isSeen(*pins().window(id)); })) {
      throw std::runtime_error("no pin is seen of " + name);
    }
    return *pins().window(id);
  }
  [[nodiscard]] static QColor colorOfScreen(QPoint place) {
    const auto pixel = QGuiApplication::primaryScreen()->grabWindow(0, place.x(), place.y(), 1, 1);
    return pixel.toImage().pixelColor(0, 0);
  }
  /// Whether its picture is on the display, pixel for pixel.
  [[nodiscard]] static bool isSeen(const PinnedView& pin) {
    const auto corner = pin.mapToGlobal(pin.picturePlace().topLeft().toPoint());
    return std::ranges::all_of(std::array{QPoint(40, 120), QPoint(160, 100), QPoint(280, 180)}, [&](QPoint point) {
      return colorOfScreen(corner + point) == pin.picture().pixelColor(point);
    });
  }
  static void dragBy(QPoint from, QPoint by) {
    pointTo(from);
    act(QStringLiteral("mousedown 1"));
    for (int step = 1; step <= 4; ++step) pointTo(from + by * step / 4);
    act(QStringLiteral("mouseup 1"));
  }
  static void clickAt(QPoint place) {
    pointTo(place);
    act(QStringLiteral("click 1"));
  }
  [[nodiscard]] static std::unique_ptr<Testing::DesktopClient> otherProgram() {
    return std::make_unique<Testing::DesktopClient>(
        std::vector<std::string>{Testing::programPath("TestWindow").toStdString(), "WM_CLASS", "other/Other"});
  }
};

TEST_F(PinDesktopTest, APinStaysAboveAMaximisedWindow) {
  const auto& pin = pinned("Screenshot 1.png");
  window().showMaximized();
  ASSERT_TRUE(waitUntil([&] { return window().frameGeometry().contains(pin.geometry()); }));
  window().raise();
  window().activateWindow();
  Testing::runEventLoopFor(aWhile);
  EXPECT_TRUE(isSeen(pin));
}

TEST_F(PinDesktopTest, APinStaysAboveAnotherProgramInFront) {
  const auto& pin = pinned("Screenshot 1.png");
  const auto other = otherProgram();
  act(QStringLiteral("search --sync --onlyvisible --class ^Other$ windowmove 0 0 windowsize 1280 800 windowactivate"));
  ASSERT_TRUE(waitUntil([&] {
    return colorOfScreen({1100, 700}) == QColor(Qt::white);
  })) << "the other window is as large as the display";
  Testing::runEventLoopFor(aWhile);
  EXPECT_TRUE(isSeen(pin));
}

TEST_F(PinDesktopTest, APinIsOnEveryWorkspaceAlsoAfterACapture) {
  const auto& pin = pinned("Screenshot 1.png");
  const auto place = window().geometry().center();
  const auto ofWindow = colorOfScreen(place);
  act(QStringLiteral("set_desktop 1"));
  ASSERT_TRUE(waitUntil([&] { return colorOfScreen(place) != ofWindow; })) << "the main window is on the other one";
  EXPECT_TRUE(waitUntil([&] { return isSeen(pin); }));
  Q_EMIT store().hidingRequested();
  ASSERT_TRUE(waitUntil([&] { return !isSeen(pin); }));
  Q_EMIT store().unhidingRequested();
  EXPECT_TRUE(waitUntil([&] { return isSeen(pin); }));
  act(QStringLiteral("set_desktop 2"));
  EXPECT_TRUE(waitUntil([&] { return isSeen(pin); }));
}

TEST_F(PinDesktopTest, APinLeavesTheKeyboardToTheWindowThatHasIt) {
  const auto& pin = pinned("Screenshot 1.png");
  Testing::runEventLoopFor(aWhile);
  EXPECT_TRUE(window().isActiveWindow());
  EXPECT_FALSE(pin.isActiveWindow());
  pins().pin(shot("Screenshot 1.png"));
  Testing::runEventLoopFor(aWhile);
  EXPECT_TRUE(window().isActiveWindow()) << "also when it comes to the front again";
  act(QStringLiteral("key Escape"));
  Testing::runEventLoopFor(aWhile);
  EXPECT_EQ(pins().count(), 1U);
}

TEST_F(PinDesktopTest, APinLeavesTheKeyboardToAnotherProgram) {
  const auto other = otherProgram();
  Testing::bringToFront("Other");
  ASSERT_TRUE(waitUntil([this] { return !window().isActiveWindow(); }));
  const auto& pin = pinned("Screenshot 1.png");
  Testing::runEventLoopFor(aWhile);
  EXPECT_FALSE(pin.isActiveWindow());
  EXPECT_EQ(QGuiApplication::focusWindow(), nullptr);
}

TEST_F(PinDesktopTest, AClickGivesItTheKeyboardAndEscapeUnpinsIt) {
  auto& pin = pinned("Screenshot 1.png");
  clickAt(pin.geometry().center());
  ASSERT_TRUE(QTest::qWaitForWindowActive(&pin));
  act(QStringLiteral("key Escape"));
  EXPECT_TRUE(waitUntil([this] { return pins().count() == 0; }));
}

TEST_F(PinDesktopTest, AnyPointOfItMovesIt) {
  const auto& pin = pinned("Screenshot 1.png");
  const auto before = pin.geometry();
  dragBy(before.center(), {-300, 250});
  EXPECT_TRUE(waitUntil([&] { return pin.geometry() == before.translated(-300, 250); })) << pin.x() << " " << pin.y();
  EXPECT_TRUE(waitUntil([&] { return isSeen(pin); }));
  EXPECT_TRUE(waitUntil([] { return QGuiApplication::mouseButtons() == Qt::NoButton; })) << "the button is let go";
}

TEST_F(PinDesktopTest, ItsEdgesResizeIt) {
  const auto& pin = pinned("Screenshot 1.png");
  const auto before = pin.geometry();
  dragBy({before.left() + 2, before.center().y()}, {-120, 0});
  EXPECT_TRUE(waitUntil([&] { return pin.geometry() == before.adjusted(-120, 0, 0, 0); }));
  dragBy(pin.geometry().bottomRight() - QPoint(2, 2), {20, 90});
  EXPECT_TRUE(waitUntil([&] { return pin.geometry() == before.adjusted(-120, 0, 20, 90); }));
}

TEST_F(PinDesktopTest, ShiftKeepsItsRatio) {
  const auto& pin = pinned("Screenshot 1.png");
  const auto before = pin.geometry();
  act(QStringLiteral("keydown Shift_L"));
  dragBy({before.left() + 2, before.center().y()}, {-160, 0});
  act(QStringLiteral("keyup Shift_L"));
  EXPECT_TRUE(waitUntil([&] { return pin.size() == QSize(480, 300); })) << pin.width() << " x " << pin.height();
}

TEST_F(PinDesktopTest, TheWheelChangesItsSize) {
  const auto& pin = pinned("Screenshot 1.png");
  pointTo(pin.geometry().center());
  act(QStringLiteral("click 4"));
  EXPECT_TRUE(waitUntil([&] { return pin.size() == QSize(352, 220); })) << pin.width() << " x " << pin.height();
}

TEST_F(PinDesktopTest, ItFadesAndComesBack) {
  const auto& pin = pinned("Screenshot 1.png");
  const auto middle = pin.geometry().center();
  const auto full = colorOfScreen(middle);
  pointTo(middle);
  const auto& fade = *pin.findChild<PinButton*>(QStringLiteral("pin.fade"));
  ASSERT_TRUE(waitUntil([&] { return fade.isVisible(); }));
  clickAt(fade.mapToGlobal(fade.rect().center()));
  EXPECT_TRUE(waitUntil([&] { return colorOfScreen(middle) != full; }));
  EXPECT_EQ(pin.opacity(), 0.55);
  act(QStringLiteral("click 1"));
  EXPECT_TRUE(waitUntil([&] { return colorOfScreen(middle) == full; }));
  pointTo({10, 790});
  EXPECT_TRUE(waitUntil([&] { return !fade.isVisible(); }));
}

TEST_F(PinDesktopTest, CornersAreRoundWhereTheDisplayBlendsWindows) {
  EXPECT_FALSE(pinned("Screenshot 1.png").testAttribute(Qt::WA_TranslucentBackground));
  pins().unpinAll();
  const Blending blending;
  EXPECT_TRUE(pinned("Screenshot 1.png").testAttribute(Qt::WA_TranslucentBackground));
}

TEST_F(PinDesktopTest, AnotherProgramInFrontClosesThePinsOfSensitiveShots) {
  unlock("Screenshot secret.png");
  pinned("Screenshot secret.png");
  pinned("Screenshot 1.png");
  const auto other = otherProgram();
  Testing::bringToFront("Other");
  ASSERT_TRUE(locks());
  EXPECT_EQ(pins().window(shot("Screenshot secret.png")->id), nullptr);
  EXPECT_EQ(pins().count(), 1U);
}

}  // namespace
}  // namespace Nimbrel
