// From the command to the pixels of a pin on the screen, for a shot of 2560 x 1440 that the gallery has shown. A child
// process, on a display with a window manager, makes the pins and looks at the screen.

#include "Foundation/FilePath.h"
#include "Linux/X11/X11WindowStacking.h"
#include "MarkedScreen.h"
#include "Measure.h"
#include "Views/Gallery/ThumbLoader.h"
#include "Views/Pins/PinBoard.h"
#include "Views/Shared/NimbrelStyle.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel::Benchmarks {
namespace {

constexpr QSize shotSize(2560, 1440);
constexpr int rounds = 15;
constexpr double limit = 0.1;
constexpr double patience = 20;  ///< seconds
constexpr std::string_view childArgument = "--pins";

double secondsOf(const QElapsedTimer& timer) { return static_cast<double>(timer.nsecsElapsed()) * 1e-9; }

/// A picture with the mark in its middle and something to decode around it.
void writeShot(const std::string& path) {
  QImage image(shotSize, QImage::Format_RGB32);
  QPainter painter(&image);
  QLinearGradient ground(0, 0, shotSize.width(), shotSize.height());
  ground.setColorAt(0, Qt::darkGreen);
  ground.setColorAt(1, Qt::yellow);
  painter.fillRect(image.rect(), ground);
  for (int line = 0; line < 60; ++line) {
    painter.drawText(20, 24 * line, QString::number(line).repeated(200));
  }
  painter.fillRect(image.rect().adjusted(800, 400, -800, -400), MarkedScreen::mark);
  painter.end();
  if (!image.save(QString::fromStdString(path))) fail("cannot write the shot");
}

/// A user with one shot, and the pins over it.
class Scene {
 public:
  Scene() {
    const auto home = folder_.path().toStdString();
    store_ = Store::open({.role = ProcessRole::tool,
                          .folders = {.home = home,
                                      .applicationSupport = FilePath::join(home, "data"),
                                      .preferences = FilePath::join(home, "config")},
                          .clock = [] { return timestamp(1'760'000'000); },
                          .services = Services(),
                          .defaults = std::make_unique<Defaults>(FilePath::join(home, "config"), "suite")})
                 .value();
    const auto path = FilePath::join(home, "Screenshot 1.png");
    writeShot(path);
    store_->importFiles({path});
    previews_.store(ShotFile::thumbnail(path, ThumbLoader::previewSide), path);
    board_ = std::make_unique<PinBoard>(*store_, previews_, *stacking_);
  }

  /// Seconds from the command until the picture is on the screen.
  double pin() {
    QElapsedTimer timer;
    timer.start();
    board_->pin(shot());
    const auto* window = board_->window(shot()->id);
    if (window == nullptr) fail("the shot is not pinned at once");
    waitUntilMarked(window->geometry().center(), true);
    return secondsOf(timer);
  }
  void unpin() {
    const auto place = board_->window(shot()->id)->geometry().center();
    board_->unpinAll();
    waitUntilMarked(place, false);
  }

 private:
  [[nodiscard]] const ShotPtr& shot() const { return store_->shots().front(); }
  static void waitUntilMarked(QPoint place, bool isMarked) {
    QElapsedTimer timer;
    timer.start();
    while (secondsOf(timer) < patience) {
      QCoreApplication::processEvents();
      const auto pixel = QGuiApplication::primaryScreen()->grabWindow(0, place.x(), place.y(), 1, 1).toImage();
      if ((pixel.pixelColor(0, 0) == MarkedScreen::mark) == isMarked) return;
    }
    fail(isMarked ? "the pin is not seen" : "the pin stays");
  }

  QTemporaryDir folder_;
  std::unique_ptr<Store> store_;
  GalleryPreviewCache previews_;
  std::unique_ptr<WindowStacking> stacking_ = makeX11WindowStacking(std::make_shared<XcbConnection>());
  std::unique_ptr<PinBoard> board_;
};

int measurePins() {
  Scene scene;
  // Fonts, symbols and the first window of a process are the main window's matter.
  (void)scene.pin();
  scene.unpin();
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) {
    times.push_back(scene.pin());
    scene.unpin();
  }
  std::ranges::sort(times);
  return printTable({{"a pin of a shot that the gallery showed, median", times[times.size() / 2], limit, 1.0},
                     {"the same, the slowest of 15", times.back(), limit, 1.0}},
                    "seconds until it is seen");
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  if (argc > 1 && argv[1] == Nimbrel::Benchmarks::childArgument) {
    QApplication application(argc, argv);
    Nimbrel::installDesign(application);
    return Nimbrel::Benchmarks::measurePins();
  }
  const QCoreApplication application(argc, argv);
  return Nimbrel::Benchmarks::runAgainOnScreen(Nimbrel::Benchmarks::childArgument);
}
