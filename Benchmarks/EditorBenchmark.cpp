// The editor beside its limits: from opening it until the picture is painted against decoding the file alone, and how
// long a frame takes while a mark is dragged over many others.

#include "Measure.h"
#include "Platform/ImageFile.h"
#include "ScreenScene.h"
#include "Views/Editor/EditorView.h"
#include "Views/Shared/NimbrelStyle.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QMouseEvent>
#include <QPainter>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace Nimbrel::Benchmarks {
namespace {

constexpr QSize fiveK(5120, 2880);
constexpr QSize eightK(7680, 4320);
constexpr int rounds = 7;
constexpr int frames = 400;
constexpr int manyMarks = 500;
constexpr int columns = 25;
constexpr double openingTarget = 1.3;
constexpr double frameSeconds = 0.016;

/// As many windows as have room.
QImage screenOf(QSize size) {
  const auto tile = ScreenScene().frame(30);
  QImage picture(size, QImage::Format_RGB32);
  QPainter painter(&picture);
  for (int y = 0; y < size.height(); y += tile.height()) {
    for (int x = 0; x < size.width(); x += tile.width()) painter.drawImage(x, y, tile);
  }
  return picture;
}

/// A user with a window, and a screenshot that the editor is opened for.
class Scene {
 public:
  Scene() {
    const auto home = folder_.path().toStdString();
    store_ = Store::open({.role = ProcessRole::tool,
                          .folders = {.home = home, .applicationSupport = home + "/data", .preferences = home},
                          .clock = [] { return timestamp(1'760'000'000); },
                          .services = {},
                          .defaults = std::make_unique<Defaults>(home, "suite")})
                 .value();
    window_.resize(1120, 720);
    window_.show();
  }

  ShotPtr shotOf(QSize size) {
    Shot shot;
    shot.path = folder_.path().toStdString() + "/" + std::to_string(size.width()) + ".png";
    const bool isThere = QFile::exists(QString::fromStdString(shot.path));
    if (!isThere && ImageFile::writePNG(screenOf(size), shot.path)) std::fprintf(stderr, "a picture is not written\n");
    return std::make_shared<const Shot>(shot);
  }

  /// Opens the editor, and comes back when the picture is painted.
  std::unique_ptr<EditorView> open(const ShotPtr& shot) {
    auto sheet = std::make_unique<EditorView>(*store_, EditorView::Tools{.reader = reader_, .pasteboard = pasteboard_},
                                              shot, &window_);
    sheet->open();
    while (sheet->canvas().canvasGeometry().picture.isEmpty()) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    sheet->canvas().viewport()->repaint();
    return sheet;
  }

 private:
  QTemporaryDir folder_;
  std::unique_ptr<Store> store_;
  NullPictureReader reader_;
  NullPasteboard pasteboard_;
  QWidget window_;
};

void scatterMarks(EditorState& state) {
  for (int i = 0; i < manyMarks; ++i) {
    const int row = i / columns;
    const QPointF start(i % columns / 25.0, row / 20.0);
    const auto kind = allAnnotationKinds[static_cast<std::size_t>(i) % (allAnnotationKinds.size() - 1)];
    state.setColorIndex(i % 5);
    state.place(kind, start, start + QPointF(0.03, 0.03), i, "Label");
  }
}

void sendMouse(EditorCanvas& canvas, QEvent::Type type, QPointF place) {
  const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
  const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
  QMouseEvent event(type, place, canvas.viewport()->mapToGlobal(place), button, held, Qt::NoModifier);
  QApplication::sendEvent(canvas.viewport(), &event);
}

/// The 99th percentile of the time from a movement of the pointer until what it changed is painted.
Comparison dragged(Scene& scene, const std::string& name, QSize size, double zoom) {
  const auto sheet = scene.open(scene.shotOf(size));
  scatterMarks(sheet->state());
  sheet->state().setTool(3);
  auto& canvas = sheet->canvas();
  while (canvas.canvasGeometry().zoom < zoom) canvas.zoomIn();
  QCoreApplication::processEvents();
  const QPointF corner(120, 60);
  sendMouse(canvas, QEvent::MouseButtonPress, corner);
  std::vector<double> times;
  for (int frame = 0; frame < frames; ++frame) {
    QElapsedTimer timer;
    timer.start();
    sendMouse(canvas, QEvent::MouseMove, corner + QPointF(frame % 200 * 3, frame % 150 * 2.5));
    QCoreApplication::processEvents();
    times.push_back(static_cast<double>(timer.nsecsElapsed()) * 1e-9);
  }
  sendMouse(canvas, QEvent::MouseButtonRelease, corner);
  std::ranges::sort(times);
  return {name, times[times.size() * 99 / 100], frameSeconds, 1.0};
}

int runAll() {
  Scene scene;
  const auto shot = scene.shotOf(fiveK);
  std::vector<Comparison> rows;
  rows.push_back(compare(
      "opening 5120 x 2880", openingTarget, rounds,
      [&] { use(static_cast<std::size_t>(scene.open(shot)->canvas().width())); },
      [&] { use(static_cast<std::size_t>(ImageFile::picture(shot->path).width())); }));
  rows.push_back(dragged(scene, "a frame of a drag, 5120 x 2880, 500 marks", fiveK, 1));
  rows.push_back(dragged(scene, "a frame of a drag, 7680 x 4320, 500 marks", eightK, 1));
  rows.push_back(dragged(scene, "the same, enlarged six times", eightK, 6));
  return printTable(rows, "seconds");
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  Nimbrel::installDesign(application);
  return Nimbrel::Benchmarks::runAll();
}
