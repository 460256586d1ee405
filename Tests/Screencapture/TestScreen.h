#pragma once

#include "Screencapture/DesktopLayout.h"
#include "Screencapture/X11Display.h"
#include "Support/DesktopSession.h"
#include "Support/ProgramRun.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>

#include <memory>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// The colour that the desktop of a test has there: no two pixels of it have the same.
[[nodiscard]] QRgb desktopColour(int x, int y);

/// Whether the picture shows the desktop from that point on.
[[nodiscard]] ::testing::AssertionResult showsDesktop(const QImage& picture, QPoint from);

/// A window of one colour, which the server paints by itself, placed where it wants to be.
class ColourWindow {
 public:
  ColourWindow(const Screencapture::X11Display& display, const QRect& area, const QColor& colour);
  ~ColourWindow();
  ColourWindow(const ColourWindow&) = delete;
  ColourWindow& operator=(const ColourWindow&) = delete;

  /// With the frame that the window manager gave it.
  [[nodiscard]] QRect frame() const;
  /// Without.
  [[nodiscard]] QRect inside() const;

 private:
  const Screencapture::X11Display& display_;
  xcb_window_t window_;
};

/// A desktop whose every pixel is known, and the program that takes pictures of it into a folder.
class ScreenTest : public ::testing::Test {
 protected:
  void SetUp() override;

  [[nodiscard]] const Screencapture::X11Display& display() const { return *display_; }

  /// Adds monitors to that which is all of the screen.
  void addMonitors(const std::vector<Screencapture::Monitor>& monitors) const;

  /// Starts it with these arguments, "-d" and path() behind them.
  [[nodiscard]] std::unique_ptr<QProcess> start(const QStringList& options) const;
  /// The same, once its overlay is on the screen.
  [[nodiscard]] std::unique_ptr<QProcess> startOverlay(const QStringList& options) const;
  [[nodiscard]] bool hasOverlay() const;
  /// Waits for its end; -1 when it does not come or is none of its own.
  [[nodiscard]] int statusOf(QProcess& process) const;

  /// What a hand does, in words of xdotool.
  static void act(const QString& actions);

  [[nodiscard]] std::string path() const { return folder_.path("picture.png"); }
  [[nodiscard]] bool isFolderEmpty() const;
  /// What was written.
  [[nodiscard]] QImage picture() const;

  DesktopSession session_;
  TemporaryFolder folder_;
  TemporaryFolder home_;

 private:
  void paintDesktop() const;

  std::unique_ptr<Screencapture::X11Display> display_;
};

}  // namespace Nimbrel::Testing
