#pragma once

#include "App/DesktopFixture.h"

#include "Linux/X11/X11WindowActivation.h"
#include "Linux/X11/X11WindowFocus.h"
#include "Linux/X11/X11WindowStacking.h"
#include "Support/DesktopSession.h"
#include "Support/ProgramRun.h"
#include "Support/TellingProgram.h"
#include "Support/Waiting.h"
#include "Views/Shared/Theme.h"

#include <gmock/gmock.h>

#include <QGuiApplication>
#include <QScreen>

#include <memory>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// The application on a real display behind another program, in which the user works.
class FloatingFixture : public DesktopFixture {
 protected:
  FloatingFixture() {
    const auto connection = std::make_shared<XcbConnection>();
    services_.windowStacking = makeX11WindowStacking(connection);
    services_.windowFocus = makeX11WindowFocus(connection);
    services_.windowActivation = makeX11WindowActivation(connection);
    addShot("Screenshot 1.png", "A recipe for soup");
    addShot("Screenshot 2.png", "Departure from platform nine");
    addShot("Screenshot secret.png", "the key is under the mat", {"Password"});
    openWindowAside();
  }
  ~FloatingFixture() override { act(QStringLiteral("set_desktop 0")); }

  /// Starts the other program and brings it to the front.
  void workElsewhere() {
    letter_ = std::make_unique<TellingProgram>("PasteProgram", QStringList());
    letter_->expectLine("ready");
    goBackToLetter();
  }
  void goBackToLetter() {
    act(QStringLiteral("search --sync --onlyvisible --name ^Letter$ windowactivate --sync"));
    ASSERT_TRUE(waitUntil([] { return QGuiApplication::focusWindow() == nullptr; }));
  }
  /// Types a letter once the keyboard is with no window of ours, and whether the other program has got it.
  [[nodiscard]] bool letterGets(char key) {
    const auto isElsewhere = [this] {
      const auto front = focus_->current();
      return front && !front->isOurs;
    };
    if (!waitUntil(isElsewhere)) return false;
    act(QStringLiteral("key ") + QLatin1Char(key));
    return waitUntil([&] { return letter_->hasTold(QByteArray("key ") + key); });
  }
  [[nodiscard]] static QColor colorOfScreen(QPoint place) {
    const auto pixel = QGuiApplication::primaryScreen()->grabWindow(0, place.x(), place.y(), 1, 1);
    return pixel.toImage().pixelColor(0, 0);
  }
  /// Whether the outline of a panel is on the display.
  [[nodiscard]] static bool isSeen(const FloatingPanel& panel) {
    const auto outline = themeColor(Token::PopoverBorder);
    return panel.isVisible() && colorOfScreen(panel.mapToGlobal(QPoint(0, panel.height() / 2))) == outline &&
           colorOfScreen(panel.mapToGlobal(QPoint(panel.width() - 1, panel.height() / 2))) == outline;
  }
  static void dragBy(QPoint from, QPoint by) {
    pointTo(from);
    act(QStringLiteral("mousedown 1"));
    for (int step = 1; step <= 4; ++step) pointTo(from + by * step / 4);
    act(QStringLiteral("mouseup 1"));
  }
  /// A window of another program over the whole display.
  [[nodiscard]] static std::unique_ptr<DesktopClient> coverEverything() {
    auto client = std::make_unique<DesktopClient>(
        std::vector<std::string>{programPath("TestWindow").toStdString(), "WM_CLASS", "cover/Cover"});
    act(QStringLiteral(
        "search --sync --onlyvisible --class ^Cover$ windowmove 0 0 windowsize 1280 800 windowactivate --sync"));
    EXPECT_TRUE(waitUntil([] { return colorOfScreen({1100, 780}) == QColor(Qt::white); }));
    return client;
  }

  std::unique_ptr<TellingProgram> letter_;

 private:
  /// As somebody looks who is not the application.
  std::unique_ptr<WindowFocus> focus_ = makeX11WindowFocus(std::make_shared<XcbConnection>());
};

}  // namespace Nimbrel::Testing
