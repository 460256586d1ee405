// How long a frame of the gallery's grid takes while 50,000 shots are scrolled through and thumbnails come in: the time
// of the main thread for everything between two frames, of which all but one in a hundred must fit into one at 60 Hz.

#include "CatalogueMaker.h"
#include "Foundation/FilePath.h"
#include "Measure.h"
#include "ScreenScene.h"
#include "Views/Gallery/GalleryView.h"
#include "Views/Gallery/GridView.h"
#include "Views/Shared/NimbrelStyle.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <random>
#include <string>
#include <vector>

namespace Nimbrel::Benchmarks {
namespace {

constexpr int shotCount = 50'000;
constexpr int frames = 600;
constexpr double frame = 0.016;
constexpr QSize windowSize(1200, 800);
constexpr int notch = 120;  ///< device-independent pixels

double threadSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// A user with a catalogue, and a few pictures that stand for all of its files.
class Scene {
 public:
  Scene()
      : folders_{.home = folder_.path().toStdString(),
                 .applicationSupport = FilePath::join(folder_.path().toStdString(), "data"),
                 .preferences = FilePath::join(folder_.path().toStdString(), "config")} {
    makeCatalogue(folders_.applicationSupport, FilePath::join(folders_.home, "library"), shotCount);
    const ScreenScene scene;
    for (int number = 0; number < 6; ++number) {
      files_.push_back(FilePath::join(folders_.home, std::to_string(number) + ".png"));
      scene.frame(number * 20).save(QString::fromStdString(files_.back()));
    }
    store_ = Store::open({.role = ProcessRole::tool,
                          .folders = folders_,
                          .clock = [] { return timestamp(1'760'000'000); },
                          .services = {},
                          .defaults = std::make_unique<Defaults>(folders_.preferences, "suite")})
                 .value();
    store_->setFilter({Filter::All{}});
  }

  [[nodiscard]] Store& store() { return *store_; }
  [[nodiscard]] QImage decoded(const std::string& path, int maxPixel) const {
    return ShotFile::thumbnail(files_[std::hash<std::string>()(path) % files_.size()], maxPixel);
  }

 private:
  QTemporaryDir folder_;
  UserFolders folders_;
  std::vector<std::string> files_;
  std::unique_ptr<Store> store_;
};

/// The times of all frames, in order of size.
class FrameTimes {
 public:
  void measure(const std::function<void()>& work) {
    QElapsedTimer wall;
    wall.start();
    const auto start = threadSeconds();
    work();
    cpu_.push_back(threadSeconds() - start);
    wall_.push_back(static_cast<double>(wall.nsecsElapsed()) * 1e-9);
  }
  [[nodiscard]] Comparison row(const std::string& name) {
    const auto at = [](std::vector<double>& times, double part) {
      std::ranges::sort(times);
      return times[static_cast<std::size_t>(part * static_cast<double>(times.size() - 1))] * 1000;
    };
    std::printf("%-48s median %6.2f ms, 99th %6.2f ms; on the clock %6.2f and %6.2f ms\n", name.c_str(), at(cpu_, 0.5),
                at(cpu_, 0.99), at(wall_, 0.5), at(wall_, 0.99));
    return {name, at(cpu_, 0.99) / 1000, frame, 1.0};
  }

 private:
  std::vector<double> cpu_;
  std::vector<double> wall_;
};

/// Scrolls so many times to where `next` says, as fast as frames come.
Comparison scrolled(GalleryView& view, const std::string& name, const std::function<int(int)>& next) {
  auto* grid = view.findChild<GridView*>();
  FrameTimes times;
  for (int number = 0; number < frames; ++number) {
    times.measure([&] {
      grid->verticalScrollBar()->setValue(next(grid->verticalScrollBar()->value()));
      QCoreApplication::processEvents();
    });
  }
  return times.row(name);
}

int runAll() {
  Scene scene;
  NullInstalledApplications applications;
  AppIcons icons(applications);
  ThumbCache thumbs;
  GalleryPreviewCache previews;
  GalleryView view({.store = scene.store(), .icons = icons, .thumbs = thumbs, .previews = previews}, nullptr,
                   [&scene](const std::string& path, int maxPixel) { return scene.decoded(path, maxPixel); });
  view.resize(windowSize);
  view.show();
  QCoreApplication::processEvents();

  std::mt19937 random(3);
  const auto height = view.findChild<GridView*>()->verticalScrollBar()->maximum();
  const auto anywhere = [&](int) { return static_cast<int>(random() % static_cast<unsigned>(height)); };
  std::vector<Comparison> rows;
  rows.push_back(scrolled(view, "a notch of the wheel in each frame", [](int value) { return value + notch; }));
  rows.push_back(scrolled(view, "back through what is cached", [](int value) { return value - notch; }));
  rows.push_back(scrolled(view, "five notches in each frame", [](int value) { return value + 5 * notch; }));
  rows.push_back(scrolled(view, "the scroll bar dragged anywhere", anywhere));
  scene.store().setQuery("ta");
  scene.store().runSearch();
  QCoreApplication::processEvents();
  rows.push_back(scrolled(view, "a notch in each frame of a search", [](int value) { return value + notch; }));
  return printTable(rows, "seconds of the main thread, 99th percentile");
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  Nimbrel::installDesign(application);
  return Nimbrel::Benchmarks::runAll();
}
