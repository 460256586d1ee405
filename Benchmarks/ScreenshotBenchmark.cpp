// Pictures of the whole screen beside maim, whole commands from their start to the file, and what a step of a drag over
// a large screen costs against the time of a frame.

#include "Measure.h"
#include "Screencapture/OverlayPicture.h"
#include "Screencapture/OverlayWindow.h"
#include "Screencapture/PixelMemory.h"
#include "Screencapture/X11Display.h"

#include <QFile>
#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include <sys/prctl.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Nimbrel::Benchmarks {
namespace {

using Screencapture::PixelMemory;
using Screencapture::X11Display;

constexpr int rounds = 15;
constexpr double targetBesidePeer = 1.5;
constexpr double frameSeconds = 0.016;

[[noreturn]] void giveUp(const char* reason) {
  std::fprintf(stderr, "ScreenshotBenchmark: %s\n", reason);
  std::exit(1);
}

/// A display of that size, named in the environment while it lives.
class VirtualDisplay {
 public:
  explicit VirtualDisplay(QSize size) {
    const auto screen = QStringLiteral("%1x%2x24").arg(size.width()).arg(size.height());
    server_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    server_.start(QStringLiteral("Xvfb"),
                  {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                   screen, QStringLiteral("-noreset"), QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    // It writes its number once it takes clients.
    if (!server_.waitForReadyRead()) giveUp("Xvfb does not start");
    qputenv("DISPLAY", ":" + server_.readLine().trimmed());
  }
  ~VirtualDisplay() {
    server_.terminate();
    server_.waitForFinished();
  }
  VirtualDisplay(const VirtualDisplay&) = delete;
  VirtualDisplay& operator=(const VirtualDisplay&) = delete;

 private:
  QProcess server_;
};

void drawWindow(QPainter& painter, const QRect& frame) {
  painter.fillRect(frame, QColor(250, 250, 252));
  painter.fillRect(frame.adjusted(0, 0, 0, 30 - frame.height()), QColor(225, 226, 230));
  painter.setPen(QColor(40, 40, 48));
  for (int y = frame.top() + 50; y < frame.bottom() - 20; y += 19) {
    painter.drawText(frame.left() + 20, y,
                     QStringLiteral("%1 a line of a text that somebody reads, %2 and so on").arg(y * 7919).arg(y));
  }
}

/// Windows with text on a desk that is not plain.
QImage desktopPicture(QSize size) {
  QImage image(size, QImage::Format_RGB32);
  QPainter painter(&image);
  QLinearGradient ground(0, 0, size.width(), size.height());
  ground.setColorAt(0, QColor(34, 87, 122));
  ground.setColorAt(1, QColor(199, 125, 90));
  painter.fillRect(image.rect(), ground);
  const int width = size.width() * 2 / 5;
  const int height = size.height() * 3 / 4;
  drawWindow(painter, QRect(size.width() / 20, size.height() / 10, width, height));
  drawWindow(painter, QRect(size.width() / 2, size.height() / 6, width, height));
  return image;
}

std::unique_ptr<X11Display> openDisplay() {
  auto display = X11Display::open();
  if (!display) giveUp(display.error().message.c_str());
  return std::move(display).value();
}

void paintScreen(const X11Display& display, const QImage& picture) {
  auto pixels = PixelMemory::make(display, picture.size(), display.screen().root_depth);
  if (!pixels) giveUp(pixels.error().message.c_str());
  pixels.value()->image() = picture;
  const auto window = display.root();
  const auto pixmap = xcb_generate_id(display.get());
  const auto context = xcb_generate_id(display.get());
  xcb_create_pixmap(display.get(), display.screen().root_depth, pixmap, window, display.screen().width_in_pixels,
                    display.screen().height_in_pixels);
  xcb_create_gc(display.get(), context, pixmap, 0, nullptr);
  pixels.value()->draw(pixmap, context, picture.rect());
  xcb_change_window_attributes(display.get(), window, XCB_CW_BACK_PIXMAP, &pixmap);
  xcb_clear_area(display.get(), 0, window, 0, 0, 0, 0);
  // Before the memory goes that it is painted from.
  if (!Screencapture::screenPixels(display, QRect(0, 0, 1, 1))) giveUp("the screen cannot be painted");
}

/// Runs a command that writes a file, which goes again.
void take(const QString& program, QStringList arguments, const QString& file) {
  arguments << file;
  if (QProcess::execute(program, arguments) != 0 || !QFile::remove(file)) giveUp("a command failed");
}

Comparison wholeScreen(QSize size) {
  const VirtualDisplay screen(size);
  const auto display = openDisplay();
  paintScreen(*display, desktopPicture(size));
  const QTemporaryDir folder;
  const auto file = folder.filePath(QStringLiteral("picture.png"));
  const auto program = QCoreApplication::applicationDirPath() + QStringLiteral("/nimbrel-screencapture");
  const auto name = "whole screen, " + std::to_string(size.width()) + " x " + std::to_string(size.height());
  return compare(
      name, targetBesidePeer, rounds,
      [&] {
        take(program, {QStringLiteral("-m"), QStringLiteral("-d")}, file);
      },
      [&] { take(QStringLiteral("maim"), {}, file); });
}

/// Waits until the server has done all that it was asked for.
void waitForServer(const X11Display& display) {
  const auto cookie = xcb_get_input_focus(display.get());
  const Screencapture::XcbOwned<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(display.get(), cookie, nullptr));
  if (!reply) giveUp("the display has gone");
}

/// A step of a drag from corner to corner, until it is seen: the median of them.
Comparison stepOfDrag(QSize size) {
  const VirtualDisplay screen(size);
  const auto display = openDisplay();
  const auto frozen = desktopPicture(size);
  const QRect all(QPoint(), size);
  const auto overlay = Screencapture::OverlayWindow::show(*display, frozen, Screencapture::overlayScene({}, all, 2));
  if (!overlay) giveUp(overlay.error().message.c_str());
  constexpr int steps = 60;
  std::vector<double> times;
  for (int step = 1; step < steps; ++step) {
    const QRect area(0, 0, step * size.width() / steps, step * size.height() / steps);
    const auto start = std::chrono::steady_clock::now();
    overlay.value()->change(Screencapture::overlayScene(area, all, 2));
    waitForServer(*display);
    times.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
  std::ranges::sort(times);
  return {"a step of a drag, beside a frame", times[times.size() / 2], frameSeconds, 1};
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  using namespace Nimbrel::Benchmarks;
  return printTable({wholeScreen({1920, 1080}), wholeScreen({3840, 2160}), stepOfDrag({3840, 2160})}, "s");
}
